import QtQuick
import Seedmote.Platform
import Seedmote.Screens

TableRow {
    id: row

    readonly property RVTorrentDetailRightListCell pair: row.cell as RVTorrentDetailRightListCell

    Rectangle {
        x: 10
        y: row.height - height
        width: row.width - x - 10
        height: 1
        color: "#e6eff4"
    }

    TorrentLabel {
        id: label

        x: 10
        height: row.height
        verticalAlignment: Text.AlignVCenter
        text: row.pair.labelleft
        font.family: "Courier"
        font.pixelSize: 10
        font.letterSpacing: -0.4
    }

    // Two lines where one is not enough, closer than usual so that both fit in the row. (A line height that is
    // told would cut what reaches below the second line.) Closer letters let a date stay on one line.
    TorrentLabel {
        x: label.x + label.width + 6
        y: -2
        width: row.width - 10 - x
        height: row.height + 4
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        text: row.pair.labelright
        wrapMode: Text.Wrap
        maximumLineCount: 2
        color: "#1d2b36"
        font.family: "Courier"
        font.pixelSize: 10
        font.letterSpacing: -0.4

        onLineLaidOut: line => {
            if (line.number === 1)
                line.y -= 2;
        }
    }
}
