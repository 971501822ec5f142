import QtQuick
import Seedmote.Settings

// A row's button: a link.
PressArea {
    id: area

    required property RVSettingsCell setting

    role: Accessible.Link
    name: area.setting.label
    hover.cursorShape: Qt.PointingHandCursor
    ring.anchors.margins: -8
    ring.anchors.topMargin: 6
    ring.anchors.bottomMargin: 6
    onPressed: area.setting.pressButton()
    onActiveFocusChanged: area.setting.reveal(area.activeFocus)
    Accessible.description: area.setting.title

    SettingLabel {
        anchors.fill: parent
        setting: area.setting
        color: "black"
        font.underline: true
        opacity: area.held ? 0.5 : 1
        Accessible.ignored: true
    }
}
