import QtQuick
import Seedmote.Platform

// A tab at the left edge of a panel that pulls it further out. Reaches a point into the panel, so that both are
// of one piece.
Item {
    id: tab

    component Stroke: Rectangle {
        width: 13
        height: 2
        radius: 1
        color: "#1d76d8"
        antialiasing: true
        transformOrigin: Item.Left
    }

    property bool atEnd

    signal pressed

    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: "Show more details"
    Accessible.onPressAction: tab.pressed()
    Keys.onPressed: event => {
        const presses = [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key);
        if (presses && !event.isAutoRepeat)
            tab.pressed();
        event.accepted = presses;
    }

    Item {
        width: tab.width + 1
        height: tab.height
        clip: true

        Rectangle {
            width: tab.width + 10
            height: tab.height
            radius: 10
            color: area.pressed ? "#dceefa" : "#ffffff"
            border.color: "#c3d8e3"
        }
    }

    Item {
        x: 7
        y: tab.height / 2 - 1
        opacity: tab.atEnd ? 0.3 : 1

        Stroke {
            rotation: 45
        }

        Stroke {
            rotation: -45
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onClicked: tab.pressed()
    }

    HoverTint {
        radius: 6
    }

    FocusRing {
        radius: 6
    }
}
