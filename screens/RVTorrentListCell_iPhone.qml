import QtQuick
import Seedmote.Platform
import Seedmote.Screens

PressableRow {
    id: row

    readonly property RVTorrentListCell torrent: row.cell as RVTorrentListCell

    Rectangle {
        anchors.fill: parent
        color: row.torrent.backgroundColor
    }

    Item {
        id: content

        anchors.fill: parent
        visible: !row.torrent.contentHidden

        ShakingIcon {
            x: 8
            y: 10
            width: 32
            height: 32
            torrent: row.torrent
            tableRow: row
        }

        TorrentLabel {
            id: name

            x: 48
            anchors.baseline: content.top
            anchors.baselineOffset: 15
            width: (eta.text.length > 0 ? eta.x - 8 : content.width - 8) - x
            text: row.torrent.labelTorrnetName
            elide: Text.ElideMiddle
            color: "#1d2b36"
            font.pixelSize: 14
            font.weight: Font.DemiBold
        }

        TorrentLabel {
            id: eta

            x: content.width - 8 - width
            anchors.baseline: name.baseline
            text: row.torrent.labelETA
            color: "#1a6fcc"
            font.pixelSize: 12
        }

        TorrentLine {
            x: name.x
            anchors.baseline: content.top
            anchors.baselineOffset: 31
            width: content.width - 8 - x
            text: row.torrent.labelBytesInformation
            font.pixelSize: 12
        }

        TorrentLine {
            x: name.x
            anchors.baseline: content.top
            anchors.baselineOffset: 45
            width: content.width - 8 - x
            text: row.torrent.labelSpeedInformation
            font.pixelSize: 12
        }

        TorrentProgress {
            x: name.x
            y: 49
            width: content.width - 8 - x
            height: 2
            torrent: row.torrent
        }
    }

    Rectangle {
        x: name.x
        y: row.height - height
        width: row.width - x
        height: 1
        color: "#d3e3eb"
    }
}
