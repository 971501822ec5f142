import QtQuick

// The large white activity indicator: twelve spokes that take turns. Hidden, and without cost, when it
// does not spin.
Item {
    id: spinner

    property bool spinning: false

    visible: spinning

    Repeater {
        model: 12

        Rectangle {
            id: spoke

            required property int index

            x: ((parent?.width ?? 0) - width) / 2
            width: 3
            height: 6.5
            radius: 1.5
            color: "white"
            opacity: 0.2 + 0.8 * index / 11
            transform: Rotation {
                origin.x: 1.5
                origin.y: (spoke.parent?.height ?? 0) / 2
                angle: spoke.index * 30
            }
        }
    }

    NumberAnimation on rotation {
        running: spinner.spinning
        loops: Animation.Infinite
        from: 0
        to: 360
        duration: 1000
    }
}
