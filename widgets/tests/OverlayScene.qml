import QtQuick
import Seedmote.Widgets

// A screen with something to touch, under the overlay.
Item {
    id: scene

    required property OvProgressHUD hud
    property int taps: 0
    property int keys: 0

    width: 400
    height: 300
    focus: true
    Keys.onPressed: scene.keys += 1

    Rectangle {
        width: 40
        height: 40
        color: "steelblue"

        NumberAnimation on rotation {
            loops: Animation.Infinite
            from: 0
            to: 360
            duration: 1000
        }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: scene.taps += 1
    }

    OverlayView {
        anchors.fill: parent
        hud: scene.hud
    }
}
