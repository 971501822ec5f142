import QtQuick
import Seedmote.Platform
import Seedmote.Settings

// Where a row's text is written. It gets a text whenever its cell is filled with one of its kind, secret or not;
// what is typed goes to the cell at once. Only a tap gives it the keys, so that a finger that scrolls brings up no
// keyboard.
TextInput {
    id: input

    required property TableViewCell cell
    property bool secret: false

    readonly property RVSettingsCell setting: input.cell as RVSettingsCell

    function isInUse() {
        return input.secret === input.setting.secure;
    }

    function fill() {
        const inUse = input.isInUse();
        input.text = inUse ? input.setting.fieldText : "";
        if (inUse && input.setting.editing)
            input.forceActiveFocus();
        else
            input.focus = false;
    }

    font: input.setting.font
    color: "#1d2b36"
    selectionColor: "#1d76d8"
    selectedTextColor: "white"
    echoMode: input.secret ? TextInput.Password : TextInput.Normal
    inputMethodHints: input.setting.inputMethodHints
    horizontalAlignment: TextInput.AlignRight
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    clip: true
    activeFocusOnPress: input.activeFocus
    activeFocusOnTab: true

    onTextChanged: {
        if (input.isInUse())
            input.setting.edit(input.text);
    }
    onActiveFocusChanged: input.setting.takeKeys(input.activeFocus)
    onAccepted: input.focus = false
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
    Keys.onEscapePressed: input.focus = false
    Component.onCompleted: input.fill()

    TapHandler {
        onTapped: input.forceActiveFocus()
    }

    Connections {
        target: input.cell

        function onFilled() {
            input.fill();
        }
        function onKeysWanted() {
            if (input.isInUse())
                input.forceActiveFocus();
        }
    }
}
