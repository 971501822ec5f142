import QtQuick
import Seedmote.Platform

// From what is to be seen now to where the view stands, for as long as its geometry says.
NumberAnimation {
    required property ViewGeometry geometry

    duration: geometry.animationMilliseconds
    easing.type: Easing.InOutQuad
}
