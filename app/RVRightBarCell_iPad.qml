import QtQuick
import Seedmote.App
import Seedmote.Platform

PressableRow {
    id: row

    readonly property RVRightBarCell button: row.cell as RVRightBarCell

    activeFocusOnTab: !row.button.blank
    Accessible.role: Accessible.Button
    Accessible.selectable: false
    activeFocusOnTab: !row.button.blank
    // A key that is held presses once: "Delete" must not confirm itself.
    Keys.onPressed: event => {
        const presses = [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key);
        if (presses && !event.isAutoRepeat)
            row.cell.press();
        event.accepted = presses;
    }

    SharpImage {
        anchors.centerIn: parent
        width: 32
        height: 32
        picture: row.button.customImageView
    }

    // Dark, for the bar is half transparent.
    Rectangle {
        anchors.centerIn: parent
        width: 44
        height: 44
        radius: 8
        color: "transparent"
        border.width: 2
        border.color: "#00204a"
        visible: row.activeFocus
    }
}
