import QtQuick
import Seedmote.App
import Seedmote.Platform

ViewItem {
    id: bar

    required property RVRightBarController controller

    geometry: bar.controller.view

    ScrollingTable {
        anchors.fill: parent
        table: bar.controller.table
        label: "Actions"
        Accessible.role: Accessible.ToolBar
        delegate: RVRightBarCell_iPad {}
    }
}
