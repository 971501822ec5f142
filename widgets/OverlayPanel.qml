import QtQuick
import Seedmote.Platform
import Seedmote.Widgets

// The panel around its centre.
Item {
    id: panel

    required property OvProgressHUD hud

    x: panel.hud.hudView.drawnCenter.x
    y: panel.hud.hudView.drawnCenter.y
    rotation: panel.hud.hudView.rotation

    Behavior on x {
        OverlayAnimation { hud: panel.hud }
    }
    Behavior on y {
        OverlayAnimation { hud: panel.hud }
    }
    Behavior on rotation {
        OverlayAnimation { hud: panel.hud }
    }

    Rectangle {
        x: -width / 2
        y: -height / 2
        width: panel.hud.hudView.size.width
        height: panel.hud.hudView.size.height
        radius: 10
        color: Qt.rgba(0, 0, 0, 0.8)
        scale: panel.hud.hudView.scale

        Behavior on scale {
            OverlayAnimation { hud: panel.hud }
        }

        Accessible.role: Accessible.AlertMessage
        Accessible.name: panel.hud.stringLabel.text

        OverlayLabel {
            label: panel.hud.stringLabel
            Accessible.ignored: true  // the panel says it
        }

        SharpImage {
            x: panel.hud.imageView.frame.x
            y: panel.hud.imageView.frame.y
            width: panel.hud.imageView.frame.width
            height: panel.hud.imageView.frame.height
            visible: panel.hud.imageView.shown
            picture: panel.hud.imageView.shown ? "qrc:/seedmote/images/" + panel.hud.imageView.name : ""
        }

        Spinner {
            x: panel.hud.spinnerView.frame.x
            y: panel.hud.spinnerView.frame.y
            width: panel.hud.spinnerView.frame.width
            height: panel.hud.spinnerView.frame.height
            spinning: panel.hud.spinnerView.spinning
        }

        OverlayLabel {
            label: panel.hud.stringTimeout
            Accessible.ignored: true

            Behavior on opacity {
                OverlayAnimation { hud: panel.hud }
            }
        }

        OverlayButton {
            button: panel.hud.okButton
            onPressed: panel.hud.onBtnOk()
        }

        OverlayButton {
            button: panel.hud.cancelButton
            onPressed: panel.hud.onBtnCancel()
        }
    }
}
