import QtQuick
import Seedmote.Platform
import Seedmote.Settings

// A row's text field. It gets a text whenever its cell is filled; what is typed goes to the cell at once. Only a
// tap gives it the keys, so that a finger that scrolls brings up no keyboard.
FocusScope {
    id: field

    required property TableViewCell cell
    readonly property RVSettingsCell setting: field.cell as RVSettingsCell

    // Where the text is secret, an assistive technology finds this and not the input, whose text it could read.
    // (Fields of passwords are nameless in Qt.)
    Accessible.ignored: !field.setting.secure || !field.visible
    Accessible.role: Accessible.EditableText
    Accessible.description: field.setting.label
    Accessible.editable: true
    Accessible.focusable: true
    Accessible.passwordEdit: true
    Accessible.onPressAction: input.forceActiveFocus()

    // From here, also when the edit was ended by a key.
    Keys.onTabPressed: input.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: input.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    Rectangle {
        anchors.centerIn: parent
        width: field.width + 16
        height: 32
        radius: 8
        color: field.setting.backgroundColor
        border.width: input.activeFocus ? 2 : 1
        border.color: input.activeFocus ? "#1d76d8" : "#b9cdd8"
    }

    TextInput {
        id: input

        anchors.fill: parent
        text: field.setting.fieldText
        font: field.setting.font
        color: resting.visible ? "transparent" : "#1d2b36"
        selectionColor: "#1d76d8"
        selectedTextColor: "white"
        echoMode: field.setting.secure ? TextInput.Password : TextInput.Normal
        inputMethodHints: field.setting.inputMethodHints
        horizontalAlignment: TextInput.AlignRight
        verticalAlignment: TextInput.AlignVCenter
        selectByMouse: true
        clip: true
        activeFocusOnPress: input.activeFocus
        activeFocusOnTab: true

        Accessible.ignored: field.setting.secure || !field.visible
        Accessible.role: field.setting.secure ? Accessible.NoRole : Accessible.EditableText
        Accessible.name: field.setting.label
        Accessible.editable: true
        Accessible.onPressAction: input.forceActiveFocus()

        onTextChanged: field.setting.edit(input.text)
        onActiveFocusChanged: input.activeFocus ? field.setting.beginEditing() : field.setting.endEditing()
        onAccepted: input.focus = false
        Keys.onEscapePressed: input.focus = false

        TapHandler {
            onTapped: input.forceActiveFocus()
        }
    }

    // A text that is too long for the field shows its beginning while nobody writes in it.
    Text {
        id: resting

        anchors.fill: parent
        visible: !input.activeFocus && !field.setting.secure
        text: field.setting.secure ? "" : input.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: field.setting.font
        color: "#1d2b36"
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    Connections {
        target: field.cell

        function onFilled() {
            input.text = field.setting.fieldText;
            if (field.setting.editing)
                input.forceActiveFocus();
            else
                input.focus = false;
        }
    }
}
