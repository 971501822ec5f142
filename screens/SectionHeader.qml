import QtQuick
import Seedmote.Platform

// Stands above the rows of a section.
Item {
    id: header

    required property TableViewCell cell

    readonly property TableHeaderCell section: header.cell as TableHeaderCell

    Accessible.role: Accessible.Heading
    Accessible.name: header.section.title

    Text {
        x: 10
        y: 10
        text: header.section.title
        textFormat: Text.PlainText
        color: "#566774"
        font.pixelSize: 12
        font.weight: Font.DemiBold
    }

    Rectangle {
        x: 10
        y: header.height - height
        width: header.width - 20
        height: 1
        color: "#d3e3eb"
    }
}
