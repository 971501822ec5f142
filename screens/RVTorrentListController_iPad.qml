import QtQuick
import Seedmote.Platform
import Seedmote.Screens

ViewItem {
    id: list

    required property RVTorrentListController controller

    geometry: list.controller.view

    GestureArea {
        anchors.fill: parent
        recognizers: list.controller.gestures

        ScrollingTable {
            anchors.fill: parent
            table: list.controller.table
            label: "Torrents"
            delegate: RVTorrentListCell_iPad {}
            header: RVTorrentListPullBar_iPad { bar: list.controller.toolbar }

            EmptyNotice {
                text: list.controller.emptyState
                visible: !list.controller.messageShown
            }
        }
    }

    SheetEdges {
        anchors.fill: parent
        anchors.topMargin: -list.y
        lifted: (list.x - 50) / 100
    }
}
