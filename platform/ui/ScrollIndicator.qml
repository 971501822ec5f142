import QtQuick

// Where the visible part of a scrolled content stands. Shows while it moves.
Rectangle {
    id: indicator

    required property Flickable flickable

    readonly property real visiblePart: flickable.height / Math.max(flickable.height, flickable.contentHeight)

    width: 3
    radius: 1.5
    height: Math.max(24, visiblePart * flickable.height)
    y: Math.min(1 - visiblePart, Math.max(0, flickable.contentY / Math.max(1, flickable.contentHeight)))
       / Math.max(1e-9, 1 - visiblePart) * (flickable.height - height)
    color: "#6b7f8c"
    visible: visiblePart < 1
    opacity: flickable.moving || settling.running ? 0.7 : 0

    Behavior on opacity {
        NumberAnimation {
            duration: 200
        }
    }

    Timer {
        id: settling

        interval: 600
    }

    Connections {
        target: indicator.flickable

        function onContentYChanged() {
            settling.restart();
        }
    }
}
