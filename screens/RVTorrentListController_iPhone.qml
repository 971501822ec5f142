import QtQuick
import Seedmote.Platform
import Seedmote.Screens

ScrollingTable {
    id: list

    required property RVTorrentListController controller

    table: list.controller.table
    label: "Torrents"
    delegate: RVTorrentListCell_iPhone {}

    EmptyNotice {
        text: list.controller.emptyState
        visible: !list.controller.messageShown
    }
}
