import QtQuick
import Seedmote.Platform
import Seedmote.Settings

ViewItem {
    id: panel

    required property RVSettingsViewController controller

    geometry: panel.controller.view
    // What is merely invisible keeps the keys.
    enabled: panel.geometry.inParent
    Accessible.role: Accessible.Pane
    Accessible.name: "Settings"

    // Nothing that lies behind the panel is touched through it.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }

    TabRing {
        anchors.fill: parent
        clip: true

        ViewItem {
            geometry: panel.controller.settingViewPos
            // Its rows pass under the finger when the panel slides away.
            enabled: !panel.controller.closing

            RVSettingsController_iPad {
                controller: panel.controller.settingController
            }
        }

        Item {
            id: bar

            width: parent.width
            height: panel.controller.settingViewPos.shownFrame.y

            Text {
                anchors.centerIn: parent
                text: "Settings"
                color: "#1d2b36"
                font.pixelSize: 16
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            PressArea {
                id: close

                x: bar.width - width - 8
                width: 68
                height: bar.height
                name: "Close"
                ring.anchors.margins: 4
                onPressed: panel.controller.pressClose()

                Connections {
                    target: panel.controller

                    function onClosePressed() {
                        close.forceActiveFocus();
                    }
                }

                Text {
                    anchors.centerIn: parent
                    text: close.name
                    color: "#1d76d8"
                    font.pixelSize: 16
                    opacity: close.held ? 0.5 : 1
                    Accessible.ignored: true
                }
            }

            Rectangle {
                y: bar.height - height
                width: bar.width
                height: 1
                color: "#d3e3eb"
            }
        }
    }

    // What the panel cuts in two fades out.
    Rectangle {
        x: panel.width
        width: 54
        height: panel.height

        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: panel.geometry.backgroundColor
            }
            GradientStop {
                position: 1
                color: Qt.alpha(panel.geometry.backgroundColor, 0)
            }
        }
    }

    PanelShadow {
        x: panel.width
        width: 8
        height: panel.height
        orientation: Gradient.Horizontal
    }

    PanelShadow {
        x: -width
        width: 8
        height: panel.height
        rotation: 180
        orientation: Gradient.Horizontal
    }

    PanelShadow {
        y: panel.height
        width: panel.width
        height: 8
        orientation: Gradient.Vertical
    }
}
