import QtQuick
import Seedmote.Widgets

// The overlay: a dimming mask that may take all touches, and the panel in the middle. It covers the
// whole screen and stands above everything.
Item {
    id: overlay

    required property OvProgressHUD hud

    readonly property bool shown: hud.panelShown

    visible: shown
    opacity: hud.alpha

    Behavior on opacity {
        NumberAnimation { duration: 150 }
    }

    Rectangle {
        anchors.fill: parent
        visible: overlay.hud.maskType === 3
        color: "black"
        opacity: 0.5
    }

    GradientMask {
        anchors.fill: parent
        visible: overlay.hud.maskType === 4
    }

    MouseArea {
        anchors.fill: parent
        enabled: overlay.hud.takesTouches
        hoverEnabled: enabled
        onWheel: (wheel) => { wheel.accepted = true }
    }

    MultiPointTouchArea {
        anchors.fill: parent
        enabled: overlay.hud.takesTouches
        mouseEnabled: false
    }

    Rectangle {
        id: panel

        x: (overlay.width - width) / 2
        y: 0.45 * overlay.height - height / 2
        width: overlay.hud.panelSize.width
        height: overlay.hud.panelSize.height
        radius: 10
        color: Qt.rgba(0, 0, 0, 0.8)
        scale: overlay.hud.panelScale

        Behavior on scale {
            NumberAnimation { duration: 150 }
        }

        Accessible.role: Accessible.AlertMessage
        Accessible.name: overlay.hud.text

        NumberAnimation on scale {
            id: entry
            running: false
            from: 1.3
            to: 1
            duration: 150
        }

        Text {
            x: overlay.hud.labelFrame.x
            y: overlay.hud.labelFrame.y
            width: overlay.hud.labelFrame.width
            height: overlay.hud.labelFrame.height
            visible: text.length > 0
            text: overlay.hud.text
            textFormat: Text.PlainText
            color: "white"
            style: Text.Raised
            styleColor: "black"
            font.pixelSize: 16
            font.bold: true
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            fontSizeMode: Text.Fit
            minimumPixelSize: 8
        }

        Image {
            x: overlay.hud.imageCenter.x - width / 2
            y: overlay.hud.imageCenter.y - height / 2
            width: 28
            height: 28
            mipmap: true
            source: overlay.hud.image
                ? "qrc:/seedmote/images/OvProgressHUD.bundle/" + overlay.hud.image + "@3x.png" : ""
            visible: overlay.hud.image.length > 0
        }

        Spinner {
            x: overlay.hud.spinnerCenter.x - width / 2
            y: overlay.hud.spinnerCenter.y - height / 2
            spinning: overlay.hud.spinning && overlay.shown
        }

        Text {
            id: countdown

            x: overlay.hud.spinnerCenter.x - width / 2
            y: overlay.hud.spinnerCenter.y - height / 2
            color: "white"
            font.pixelSize: 16
            font.bold: true
            textFormat: Text.PlainText
            Accessible.ignored: true

            NumberAnimation on opacity {
                id: fade
                running: false
                from: 1
                to: 0
                duration: 1300
            }
        }

        OverlayButton {
            center: overlay.hud.okCenter
            title: overlay.hud.okTitle
            onPressed: overlay.hud.onBtnOk()
        }

        OverlayButton {
            center: overlay.hud.cancelCenter
            title: overlay.hud.cancelTitle
            onPressed: overlay.hud.onBtnCancel()
        }
    }

    Connections {
        target: overlay.hud

        function onEntering() {
            entry.restart();
        }

        function onCounted() {
            countdown.text = overlay.hud.countdown;
            fade.restart();
        }
    }
}
