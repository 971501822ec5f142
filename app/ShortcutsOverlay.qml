import QtQuick
import Seedmote.App

// The list of the shortcuts, in front of the screens; a press anywhere hides it.
Item {
    id: overlay

    required property Shortcuts controller

    anchors.fill: parent
    z: 1
    visible: overlay.controller.shown

    Rectangle {
        anchors.fill: parent
        color: "#66000000"
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onClicked: overlay.controller.hide()
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        anchors.centerIn: parent
        width: keys.width + titles.width + 56
        height: keys.y + keys.height + 12
        scale: Math.min(1.5, overlay.height / 375)
        radius: 10
        color: "#ffffff"

        Accessible.role: Accessible.Dialog
        Accessible.name: title.text

        Text {
            id: title

            x: 20
            height: 40
            text: "Shortcuts"
            textFormat: Text.PlainText
            color: "#1d2b36"
            font.pixelSize: 16
            font.weight: Font.DemiBold
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true  // the dialog says it
        }

        Item {
            anchors.fill: parent
            Accessible.role: Accessible.List
            Accessible.name: title.text

            Column {
                id: keys

                x: 20
                y: title.height

                Repeater {
                    model: overlay.controller.entries

                    Text {
                        id: key

                        required property var modelData

                        height: 22
                        text: key.modelData.keys
                        textFormat: Text.PlainText
                        color: "#1d2b36"
                        font.pixelSize: 13
                        font.weight: Font.DemiBold
                        verticalAlignment: Text.AlignVCenter
                        Accessible.role: Accessible.ListItem
                        Accessible.name: key.modelData.keys + ", " + key.modelData.title
                    }
                }
            }

            Column {
                id: titles

                x: keys.x + keys.width + 16
                y: title.height

                Repeater {
                    model: overlay.controller.entries

                    Text {
                        id: what

                        required property var modelData

                        height: 22
                        text: what.modelData.title
                        textFormat: Text.PlainText
                        color: "#566774"
                        font.pixelSize: 13
                        verticalAlignment: Text.AlignVCenter
                        Accessible.ignored: true  // the key says it
                    }
                }
            }
        }
    }
}
