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
    Keys.onReturnPressed: row.cell.press()
    Keys.onEnterPressed: row.cell.press()
    Keys.onSpacePressed: row.cell.press()

    SharpImage {
        anchors.centerIn: parent
        width: 32
        height: 32
        picture: row.button.customImageView
    }

    Rectangle {
        anchors.centerIn: parent
        width: 44
        height: 44
        radius: 8
        color: "transparent"
        border.width: 2
        border.color: "#1d76d8"
        visible: row.activeFocus
    }
}
