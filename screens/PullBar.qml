import QtQuick
import Seedmote.Platform
import Seedmote.Screens

// What stands above the first row of the torrent list: an icon and a sentence.
ViewItem {
    id: view

    required property RVTorrentListPullbar bar
    required property int iconX
    required property int textX
    required property int bottomMargin
    required property int rightMargin
    required property int textSize

    geometry: view.bar.view

    Accessible.role: Accessible.Button
    Accessible.name: view.bar.message
    Accessible.onPressAction: view.bar.press()

    SharpImage {
        id: image

        y: view.height - height - view.bottomMargin
        x: view.iconX
        width: 32
        height: 32
        picture: view.bar.image
    }

    Text {
        anchors.verticalCenter: image.verticalCenter
        x: view.textX
        width: view.width - x - view.rightMargin
        text: view.bar.message
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: "#566774"
        font.pixelSize: view.textSize
        Accessible.ignored: true  // the bar says it
    }
}
