import QtQuick
import Seedmote.Settings

// Shows a button of two states.
PressArea {
    id: area

    required property RVSwitchButton button

    role: Accessible.CheckBox
    onPressed: area.button.press()
    Accessible.checkable: true
    Accessible.checked: area.button.onoff

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: area.button.backgroundColor
        opacity: area.held ? 0.5 : 1
    }
}
