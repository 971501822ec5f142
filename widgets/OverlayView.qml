import QtQuick
import Seedmote.Widgets

// The overlay: a mask that may take all touches, and the panel in the middle. It covers the whole screen
// and stands above everything.
Item {
    id: overlay

    required property OvProgressHUD hud

    visible: overlay.hud.hudView.exists
    opacity: overlay.hud.alpha

    Behavior on opacity {
        OverlayAnimation { hud: overlay.hud }
    }

    Rectangle {
        anchors.fill: parent
        color: "#80000000"
        visible: mask.black
    }

    OverlayMask {
        id: mask

        anchors.fill: parent
        type: overlay.hud.maskType
        visible: mask.gradient
    }

    MouseArea {
        anchors.fill: parent
        enabled: overlay.hud.overlayWindow.takesTouches
        hoverEnabled: enabled
        onWheel: (wheel) => { wheel.accepted = true }
    }

    KeyBarrier {
        closed: overlay.hud.overlayWindow.takesTouches
    }

    MultiPointTouchArea {
        anchors.fill: parent
        enabled: overlay.hud.overlayWindow.takesTouches
        mouseEnabled: false
    }

    // The screen held upright, turned so that it reads upright.
    Item {
        anchors.centerIn: parent
        anchors.alignWhenCentered: false
        width: overlay.hud.overlayWindow.size.width
        height: overlay.hud.overlayWindow.size.height
        rotation: overlay.hud.overlayWindow.rotation

        OverlayPanel { hud: overlay.hud }
    }
}
