import QtQuick
import Seedmote.Platform
import Seedmote.Screens

TableRow {
    id: row

    readonly property RVTorrentDetailFileListCell file: row.cell as RVTorrentDetailFileListCell

    TorrentLabel {
        x: 14
        width: process.x - 8 - x
        height: row.height
        verticalAlignment: Text.AlignVCenter
        text: row.file.filename
        elide: Text.ElideMiddle
        color: "#1d2b36"
        font.pixelSize: 12
    }

    TorrentLabel {
        id: process

        x: row.width - 84 - width
        height: row.height
        verticalAlignment: Text.AlignVCenter
        text: row.file.process
        font.pixelSize: 12
    }

    TorrentLabel {
        x: row.width - 12 - width
        height: row.height
        verticalAlignment: Text.AlignVCenter
        text: row.file.length
        font.pixelSize: 12
    }

    Rectangle {
        x: 14
        y: row.height - height
        width: row.width - x - 12
        height: 1
        color: "#e6eff4"
    }
}
