import QtQuick
import Seedmote.Platform

// The root of the layout of a row that does something when it is tapped: an assistive technology can press it, and
// so can Space and Return where it is one that takes the keys.
TableRow {
    id: row

    property alias ring: ring
    property alias hover: hover

    Accessible.selectable: true
    Accessible.selected: row.cell.selected
    Accessible.focused: row.cell.marked
    Accessible.onPressAction: row.cell.press()
    // A key that is held presses once: "Delete" must not confirm itself.
    Keys.onPressed: event => {
        const presses = [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key);
        if (presses && !event.isAutoRepeat)
            row.cell.press();
        event.accepted = presses;
    }

    HoverTint {
        id: hover
    }

    FocusRing {
        id: ring

        visible: row.activeFocus || row.cell.marked
    }
}
