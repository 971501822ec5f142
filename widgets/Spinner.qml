import QtQuick

// The large white activity indicator: twelve spokes that take turns. Hidden, and without cost, when it
// does not spin.
Item {
    id: spinner

    property bool spinning: false

    readonly property int spokes: 12

    width: 37
    height: 37
    visible: spinning

    Repeater {
        model: spinner.spokes

        Rectangle {
            required property int index

            x: (spinner.width - width) / 2
            width: 3
            height: 10
            radius: 1.5
            color: "white"
            opacity: 0.2 + 0.8 * index / (spinner.spokes - 1)
            transform: Rotation {
                origin.x: 1.5
                origin.y: spinner.height / 2
                angle: index * 360 / spinner.spokes
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
