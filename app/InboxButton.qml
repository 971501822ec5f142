import QtQuick
import Seedmote.Platform

// A word that can be pressed.
Item {
    id: button

    required property string title

    signal pressed

    width: label.implicitWidth + 24
    height: 44
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: button.title
    Accessible.onPressAction: button.pressed()
    Keys.onPressed: event => {
        const presses = [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key);
        if (presses && !event.isAutoRepeat)
            button.pressed();
        event.accepted = presses;
    }

    Text {
        id: label

        anchors.centerIn: parent
        text: button.title
        textFormat: Text.PlainText
        color: "#1d76d8"
        opacity: area.pressed ? 0.5 : 1
        font.pixelSize: 15
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onClicked: button.pressed()
    }

    HoverTint {
        radius: 8
    }

    FocusRing {
        radius: 8
    }
}
