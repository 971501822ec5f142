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
            x: 18
            y: 21
            width: 32
            height: 32
            torrent: row.torrent
            tableRow: row
        }

        TorrentLabel {
            id: name

            x: 66
            anchors.baseline: content.top
            anchors.baselineOffset: 23
            width: (eta.text.length > 0 ? eta.x - 12 : content.width - 18) - x
            text: row.torrent.labelTorrnetName
            elide: Text.ElideMiddle
            color: "#1d2b36"
            font.pixelSize: 16
            font.weight: Font.DemiBold
        }

        TorrentLabel {
            id: eta

            x: content.width - 18 - width
            anchors.baseline: name.baseline
            text: row.torrent.labelETA
            color: "#1a6fcc"
            font.pixelSize: 13
        }

        TorrentLine {
            x: name.x
            anchors.baseline: content.top
            anchors.baselineOffset: 44
            width: content.width - 18 - x
            text: row.torrent.labelBytesInformation
            font.pixelSize: 13
        }

        TorrentLine {
            x: name.x
            anchors.baseline: content.top
            anchors.baselineOffset: 61
            width: content.width - 18 - x
            text: row.torrent.labelSpeedInformation
            font.pixelSize: 13
        }

        TorrentProgress {
            x: name.x
            y: 69
            width: content.width - 18 - x
            height: 3
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
