import QtQuick
import Seedmote.Platform
import Seedmote.Screens

ViewItem {
    id: list

    required property RVTorrentListController controller

    geometry: list.controller.view

    // The statistics end lower than the list, which covers them once it is slid aside.
    Rectangle {
        y: list.height
        width: list.width
        height: 5
        color: list.controller.table.backgroundColor
    }

    GestureArea {
        anchors.fill: parent
        recognizers: list.controller.gestures

        ScrollingTable {
            anchors.fill: parent
            table: list.controller.table
            label: "Torrents"
            delegate: RVTorrentListCell_iPhone {}
            header: RVTorrentListPullBar_iPhone { bar: list.controller.toolbar }

            EmptyNotice {
                text: list.controller.emptyState
                visible: !list.controller.messageShown
            }
        }
    }

    SheetEdges {
        anchors.fill: parent
        anchors.topMargin: -list.y
        lifted: list.x / 100
    }
}
