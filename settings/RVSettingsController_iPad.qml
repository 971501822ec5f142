import QtQuick
import Seedmote.Platform
import Seedmote.Settings

ViewItem {
    id: screen

    required property RVSettingsController controller

    geometry: screen.controller.view

    ScrollingTable {
        anchors.fill: parent
        table: screen.controller.table
        label: "Settings"
        delegate: RVSettingsCell_iPad {}
        headerDelegate: SettingsHeader {}
    }
}
