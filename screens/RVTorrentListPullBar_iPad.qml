import QtQuick
import Seedmote.Platform
import Seedmote.Screens

ViewItem {
    id: view

    required property RVTorrentListPullbar bar

    geometry: view.bar.view

    Accessible.role: Accessible.Button
    Accessible.name: view.bar.message
    Accessible.onPressAction: view.bar.press()

    SharpImage {
        id: image

        y: view.height - height - 16
        x: 18
        width: 32
        height: 32
        picture: view.bar.image
    }

    Text {
        anchors.verticalCenter: image.verticalCenter
        x: 66
        width: view.width - x - 18
        text: view.bar.message
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: "#566774"
        font.pixelSize: 14
        Accessible.ignored: true  // the bar says it
    }
}
