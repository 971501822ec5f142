import QtQuick
import Seedmote.Widgets

// White text in the middle of its frame. The size of its font is told: left to itself, a text that is to
// shrink until it fits stays too small when its frame grows.
Text {
    required property overlayLabel label

    x: label.frame.x
    y: label.frame.y
    width: label.frame.width
    height: label.frame.height
    opacity: label.alpha
    text: label.text
    visible: text.length > 0
    textFormat: Text.PlainText
    color: "white"
    style: Text.Sunken  // the shadow lies above the letters
    styleColor: "black"
    font.pixelSize: label.fontSize
    font.bold: true
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    wrapMode: Text.Wrap
    clip: contentHeight > height
}
