import QtQuick
import Seedmote.Platform

// The root of the layout of a row that does something when it is tapped: an assistive technology can press it, and
// so can Space and Return where it is one that takes the keys.
TableRow {
    id: row

    Accessible.selectable: true
    Accessible.selected: row.cell.selected
    Accessible.onPressAction: row.cell.press()
    Keys.onReturnPressed: row.cell.press()
    Keys.onEnterPressed: row.cell.press()
    Keys.onSpacePressed: row.cell.press()

    Rectangle {
        anchors.fill: parent
        z: 1
        visible: row.activeFocus
        color: "transparent"
        border.color: "#1d76d8"
        border.width: 2
    }
}
