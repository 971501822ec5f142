import QtQuick
import Seedmote.Platform

// The speed of one direction.
Item {
    id: label

    required property url icon
    required property string speed
    required property string direction

    height: 22
    Accessible.role: Accessible.StaticText
    Accessible.name: label.direction + ", " + label.speed

    SharpImage {
        y: 1
        width: 20
        height: 20
        picture: label.icon
    }

    Text {
        x: 28
        width: label.width - x
        height: label.height
        verticalAlignment: Text.AlignVCenter
        text: label.speed
        textFormat: Text.PlainText
        color: "#1d2b36"
        font.pixelSize: 16
        font.weight: Font.DemiBold
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 10
    }
}
