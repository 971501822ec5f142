import QtQuick

Rectangle {
    color: "white"

    Column {
        anchors.fill: parent
        anchors.margins: 40
        spacing: 8

        Text {
            text: "Seedmote is a remote control"
            font.pixelSize: 20
        }

        Text {
            text: "for a Transmission daemon."
        }

        Text {
            text: "A few texts in a window."
        }
    }
}
