import QtQuick
import Seedmote.Widgets

// From what is to be seen now to the switch's state, for as long as that says.
NumberAnimation {
    required property JtSwitch control

    duration: control.animationMilliseconds
    easing.type: Easing.InOutQuad
}
