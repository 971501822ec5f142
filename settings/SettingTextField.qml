import QtQuick
import Seedmote.Platform
import Seedmote.Settings

// A row's text field. It has an input for a text that all may read and one for a secret.
FocusScope {
    id: field

    required property TableViewCell cell
    readonly property RVSettingsCell setting: field.cell as RVSettingsCell
    readonly property SettingInput input: field.setting.secure ? secret : plain

    Rectangle {
        anchors.centerIn: parent
        width: field.width + 16
        height: 32
        radius: 8
        color: field.setting.backgroundColor
        border.width: field.input.activeFocus ? 2 : 1
        border.color: field.input.activeFocus ? "#1d76d8" : "#b9cdd8"
    }

    SettingInput {
        id: plain

        anchors.fill: parent
        cell: field.cell
        visible: !field.setting.secure
        color: resting.visible ? "transparent" : resting.color

        Accessible.ignored: field.setting.secure || !field.visible
        Accessible.role: Accessible.EditableText
        Accessible.name: field.setting.label
        Accessible.editable: true
        Accessible.onPressAction: field.setting.pressField()
    }

    // A text that is too long for the field shows its beginning while nobody writes in it.
    Text {
        id: resting

        anchors.fill: parent
        visible: !plain.activeFocus && !field.setting.secure
        text: plain.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: field.setting.font
        color: "#1d2b36"
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    SecretField {
        anchors.fill: parent
        label: field.setting.label
        visible: field.setting.secure
        onPressed: field.setting.pressField()
        // An assistive technology is to look for it. What it finds the field says itself.
        Accessible.ignored: !field.setting.secure || !field.visible

        SettingInput {
            id: secret

            anchors.fill: parent
            cell: field.cell
            secret: true
        }
    }
}
