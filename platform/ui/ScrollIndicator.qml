import QtQuick

// Where the visible part of a scrolled content stands. Shows while it moves, if not by itself.
Rectangle {
    id: indicator

    required property Flickable flickable
    property bool movesByItself: false

    // The margins are covered by something else.
    readonly property real track: flickable.height - flickable.topMargin - flickable.bottomMargin
    readonly property real visiblePart: track / Math.max(1, track, flickable.contentHeight)
    readonly property real above: (flickable.contentY + flickable.topMargin) / Math.max(1, flickable.contentHeight)

    width: 3
    radius: 1.5
    height: Math.max(24, visiblePart * track)
    y: flickable.topMargin + Math.min(1 - visiblePart, Math.max(0, above))
       / Math.max(1e-9, 1 - visiblePart) * (track - height)
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
            if (!indicator.movesByItself)
                settling.restart();
        }
    }
}
