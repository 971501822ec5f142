import QtQuick
import Seedmote.Platform

// Over what does something when it is pressed, while a mouse points at it. A finger points at nothing.
Rectangle {
    property alias cursorShape: pointer.cursorShape

    anchors.fill: parent
    z: 0.5
    color: "#141d76d8"
    opacity: pointer.hovered && PointerInUse.mouse ? 1 : 0  // an invisible item would hear of no mouse

    HoverHandler {
        id: pointer

        blocking: true
    }
}
