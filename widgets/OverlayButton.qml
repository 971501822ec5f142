import QtQuick
import Seedmote.Widgets

// One of the overlay's two buttons.
Item {
    id: item

    required property overlayButton button

    signal pressed

    x: item.button.frame.x
    y: item.button.frame.y
    width: item.button.frame.width
    height: item.button.frame.height
    visible: item.button.exists

    Accessible.role: Accessible.Button
    Accessible.name: item.button.title
    Accessible.onPressAction: item.pressed()

    Rectangle {
        anchors.centerIn: parent
        width: item.button.face
        height: parent.height
        radius: 6
        color: area.pressed ? "#9098a0" : "#e8ecf0"
    }

    Text {
        anchors.fill: parent
        text: item.button.title
        textFormat: Text.PlainText
        color: "#20242a"
        font.pixelSize: 15
        font.bold: true
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onClicked: item.pressed()
    }
}
