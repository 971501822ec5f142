import QtQuick
import Seedmote.Platform

// The header of a section.
TableRow {
    id: row

    readonly property TableHeaderCell section: row.cell as TableHeaderCell

    Accessible.role: Accessible.Heading

    Text {
        x: 20
        width: row.width - 2 * x
        height: row.height - 6
        text: row.section.title
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: "#566774"
        font.pixelSize: 13
        font.weight: Font.DemiBold
        verticalAlignment: Text.AlignBottom
        Accessible.ignored: true
    }

    Rectangle {
        y: row.height - height
        width: row.width
        height: 1
        color: "#d3e3eb"
    }
}
