import QtQuick
import Seedmote.Widgets

// The overlay above a lively screen that is touched and typed at.
Rectangle {
    id: look

    required property OvProgressHUD hud
    property int taps: 0
    property int keys: 0

    color: "#f0fafe"
    focus: true
    Keys.onPressed: look.keys += 1

    Grid {
        columns: 8
        spacing: 8
        x: 8
        y: 8

        Repeater {
            model: 64

            Rectangle {
                required property int index

                width: Math.floor(parent.parent.width / 8 - 9)
                height: Math.floor(parent.parent.height / 8 - 9)
                color: Qt.hsla(index / 64, 0.7, 0.6, 1)
            }
        }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: look.taps += 1
    }

    OverlayView {
        anchors.fill: parent
        hud: look.hud
    }
}
