import QtQuick
import Seedmote.Platform
import Seedmote.Screens

TableRow {
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
        }

        TorrentLabel {
            id: name

            x: 48
            y: 2
            width: (eta.text.length > 0 ? eta.x - 8 : content.width - 12) - x
            text: row.torrent.labelTorrnetName
            elide: Text.ElideMiddle
            color: "#1d2b36"
            font.pixelSize: 14
            font.weight: Font.DemiBold
        }

        TorrentLabel {
            id: eta

            x: content.width - 12 - width
            anchors.baseline: name.baseline
            text: row.torrent.labelETA
            color: "#1d76d8"
            font.pixelSize: 12
        }

        TorrentLabel {
            x: name.x
            y: 19
            width: content.width - 12 - x
            text: row.torrent.labelBytesInformation
            font.pixelSize: 12
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 9
        }

        TorrentLabel {
            x: name.x
            y: 33
            width: content.width - 12 - x
            text: row.torrent.labelSpeedInformation
            font.pixelSize: 12
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 9
        }

        TorrentProgress {
            x: name.x
            y: 49
            width: content.width - 12 - x
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
