import QtQuick
import Seedmote.Platform
import Seedmote.Screens

TableRow {
    id: row

    readonly property RVTorrentDetailRightListCell pair: row.cell as RVTorrentDetailRightListCell

    TorrentLabel {
        id: label

        x: 10
        height: row.height
        verticalAlignment: Text.AlignVCenter
        text: row.pair.labelleft
        font.family: "Courier"
        font.pixelSize: 10
    }

    // Two lines where one is not enough.
    TorrentLabel {
        x: label.x + label.width + 8
        width: row.width - 10 - x
        height: row.height - 1
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        text: row.pair.labelright
        wrapMode: Text.Wrap
        maximumLineCount: 2
        lineHeightMode: Text.FixedHeight
        lineHeight: 10.5
        color: "#1d2b36"
        font.family: "Courier"
        font.pixelSize: 10
    }

    Rectangle {
        x: 10
        y: row.height - height
        width: row.width - x - 10
        height: 1
        color: "#e6eff4"
    }
}
