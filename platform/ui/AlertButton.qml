import QtQuick

// One of the buttons at the foot of an alert's card, side by side.
Item {
    id: button

    required property string title
    property bool last: false
    property bool divided: false  // from another on its left
    property bool ringed: false

    signal pressed

    height: 48

    Accessible.role: Accessible.Button
    Accessible.name: button.title
    Accessible.focused: button.ringed
    Accessible.onPressAction: button.pressed()

    Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        radius: 8
        color: "#e4f0fb"
        visible: area.pressed
    }

    Rectangle {
        width: parent.width
        height: 1
        color: "#d3e3eb"
    }

    Rectangle {
        width: 1
        height: parent.height
        color: "#d3e3eb"
        visible: button.divided
    }

    Text {
        anchors.fill: parent
        text: button.title
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: "#1d76d8"
        font.pixelSize: 16
        font.weight: button.last ? Font.DemiBold : Font.Normal
        Accessible.ignored: true
    }

    HoverTint {
        anchors.margins: 2
        radius: 8
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onClicked: button.pressed()
    }

    FocusRing {
        anchors.margins: 3
        radius: 8
        visible: button.ringed
    }
}
