import QtQuick
import Seedmote.Settings

// A row's on/off switch.
PressArea {
    id: area

    required property RVSettingsCell setting

    role: Accessible.CheckBox
    name: area.setting.label
    ring.anchors.fill: track
    ring.anchors.margins: -4
    ring.radius: 18
    onPressed: area.setting.pressSwitch()
    onActiveFocusChanged: area.setting.reveal(area.activeFocus)
    Accessible.checkable: true
    Accessible.checked: area.setting.on
    Accessible.onToggleAction: area.setting.pressSwitch()

    Rectangle {
        id: track

        x: area.width - width
        anchors.verticalCenter: parent.verticalCenter
        width: 48
        height: 28
        radius: 14
        color: area.setting.on ? "#1d76d8" : "#8599a5"

        Behavior on color {
            ColorAnimation {
                duration: 150
            }
        }

        Rectangle {
            x: area.setting.on ? parent.width - width - 2 : 2
            y: 2
            width: 24
            height: 24
            radius: 12
            color: "white"

            Behavior on x {
                NumberAnimation {
                    duration: 150
                    easing.type: Easing.InOutQuad
                }
            }
        }
    }
}
