import QtQuick
import Seedmote.App
import Seedmote.Platform
import Seedmote.Widgets

// What comes up in front of the root screen on occasion: the inbox's card, the shortcuts (z 1), messages and
// alerts.
Item {
    id: front

    required property RVMainViewController controller

    anchors.fill: parent
    z: 98

    InboxBar {
        x: 12
        y: parent.height - height - 12
        width: Math.min(560, parent.width - 84)  // beside the action bar
        notice: front.controller.inboxNotice
    }

    OverlayView {
        anchors.fill: parent
        z: 2
        hud: front.controller.overlay
    }

    AlertPanel {
        anchors.fill: parent
        z: 3
        alerts: front.controller.alerts
    }
}
