import QtQuick

// One of the overlay's two buttons; shown only while it has a title.
Rectangle {
    id: button

    required property point center
    required property string title

    signal pressed

    x: center.x - width / 2
    y: center.y - height / 2
    width: 80
    height: 30
    radius: 6
    visible: title.length > 0
    color: area.pressed ? "#9098a0" : "#e8ecf0"

    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.onPressAction: button.pressed()

    Text {
        anchors.centerIn: parent
        text: button.title
        textFormat: Text.PlainText
        color: "#20242a"
        font.pixelSize: 15
        font.bold: true
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onClicked: button.pressed()
    }
}
