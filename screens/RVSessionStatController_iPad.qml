import QtQuick
import Seedmote.Platform
import Seedmote.Screens

ViewItem {
    id: panel

    required property RVSessionStatController controller

    geometry: panel.controller.view

    SpeedLabel {
        x: 10
        y: 8
        width: panel.width - 20
        icon: panel.controller.downloadIcon
        speed: panel.controller.downloadSpeed
        direction: "Download"
    }

    SpeedLabel {
        x: 10
        y: 34
        width: panel.width - 20
        icon: panel.controller.uploadIcon
        speed: panel.controller.uploadSpeed
        direction: "Upload"
    }

    ViewItem {
        geometry: panel.controller.sessionStatListController.view

        ScrollingTable {
            anchors.fill: parent
            table: panel.controller.sessionStatListController.table
            label: "Statistics"
            delegate: RVSessionStatListCell_iPad {}
            headerDelegate: SectionHeader {}
        }
    }
}
