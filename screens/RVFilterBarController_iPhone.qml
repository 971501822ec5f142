import QtQuick
import Seedmote.Platform
import Seedmote.Screens

ViewItem {
    id: bar

    required property RVFilterBarController controller

    geometry: bar.controller.view

    ScrollingTable {
        anchors.fill: parent
        table: bar.controller.table
        label: "Filter"
        delegate: RVFilterBarCell_iPhone {}
    }
}
