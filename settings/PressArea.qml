import QtQuick
import Seedmote.Platform

// What can be pressed: with a finger, the mouse, Space and Return, and by an assistive technology.
Item {
    id: area

    required property string name
    property int role: Accessible.Button
    // Stands where the focus is shown.
    property alias ring: ring
    property alias hover: hover
    readonly property alias held: mouse.containsPress

    signal pressed

    activeFocusOnTab: true
    Accessible.ignored: !area.visible
    Accessible.role: area.role
    Accessible.name: area.name
    Accessible.focusable: true
    Accessible.onPressAction: area.pressed()
    Keys.onSpacePressed: event => event.isAutoRepeat || area.pressed()
    Keys.onReturnPressed: event => event.isAutoRepeat || area.pressed()
    Keys.onEnterPressed: event => event.isAutoRepeat || area.pressed()

    MouseArea {
        id: mouse

        anchors.fill: parent
        onClicked: area.pressed()
    }

    HoverTint {
        id: hover

        anchors.fill: ring
        radius: ring.radius
    }

    FocusRing {
        id: ring

        radius: 8
    }
}
