import QtQuick
import Seedmote.Widgets

// From what is to be seen now to the overlay's state, for as long as that says.
NumberAnimation {
    required property OvProgressHUD hud

    duration: hud.animationMilliseconds
    easing.type: Easing.InOutQuad
}
