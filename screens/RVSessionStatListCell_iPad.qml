import QtQuick
import Seedmote.Platform
import Seedmote.Screens

TableRow {
    id: row

    readonly property RVSessionStatListCell pair: row.cell as RVSessionStatListCell
    readonly property real room: row.width - 20

    // A narrow column is smaller throughout, lest every other row has its own size.
    readonly property int usual: row.width < 220 ? 11 : 12

    // At what size both stand beside each other. Where that is too small to be read, the value goes below its
    // label.
    readonly property int fit: Math.min(row.usual, 12 * (row.room - 6)
                                                   / (labelSize.advanceWidth + valueSize.advanceWidth + 1))
    readonly property bool stacked: row.fit < 10
    readonly property int lineHeight: row.stacked ? 11 : row.height

    TextMetrics {
        id: labelSize

        text: row.pair.labelleft
        font.pixelSize: 12
    }

    TextMetrics {
        id: valueSize

        text: row.pair.labelright
        font.pixelSize: 12
    }

    TorrentLabel {
        x: 10
        width: row.room
        height: row.lineHeight
        verticalAlignment: Text.AlignVCenter
        text: row.pair.labelleft
        font.pixelSize: row.stacked ? 10 : row.fit
    }

    TorrentLabel {
        x: 10
        y: row.height - height
        width: row.room
        height: row.lineHeight
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        text: row.pair.labelright
        color: "#1d2b36"
        font.pixelSize: row.stacked ? 10 : row.fit
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 8
    }
}
