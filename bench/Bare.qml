import QtQuick

ListView {
    id: list

    required property var torrents

    model: list.torrents

    delegate: Item {
        id: row

        required property string name
        required property string bytes
        required property string speed

        width: ListView.view.width
        height: 78

        Text {
            x: 66
            y: 8
            width: row.width - 84
            text: row.name
            elide: Text.ElideMiddle
            font.pixelSize: 16
        }

        Text {
            x: 66
            y: 32
            text: row.bytes
            font.pixelSize: 13
        }

        Text {
            x: 66
            y: 50
            text: row.speed
            font.pixelSize: 13
        }

        Rectangle {
            x: 66
            y: 77
            width: row.width - 66
            height: 1
            color: "lightgrey"
        }
    }
}
