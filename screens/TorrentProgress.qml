import QtQuick
import Seedmote.Screens

// A thin bar in the colour of the torrent's state.
Rectangle {
    id: bar

    required property RVTorrentListCell torrent

    readonly property list<color> tints: [
        "#a9b8c2", "#a9b8c2",
        "#8c9ba6", "#1d76d8", "#3c9a5f", "#12958c", "#c98a12", "#8274c4"
    ]

    radius: height / 2
    color: "#d6e5ed"

    Rectangle {
        width: bar.torrent.processDownload > 0 ? Math.max(bar.height, bar.torrent.processDownload * bar.width) : 0
        height: bar.height
        radius: bar.radius
        color: bar.tints[bar.torrent.statusID]
    }
}
