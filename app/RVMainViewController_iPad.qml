import QtQuick
import Seedmote.App
import Seedmote.Widgets

Item {
    id: view

    required property RVMainViewController controller

    anchors.fill: parent

    Rectangle {
        anchors.fill: parent
        color: view.controller.topbarColor
        opacity: view.controller.topbarAlpha
    }

    OverlayView {
        anchors.fill: parent
        z: 100
        hud: view.controller.overlay
    }
}
