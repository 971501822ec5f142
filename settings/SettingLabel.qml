import QtQuick
import Seedmote.Settings

// The text of a row's control that is not edited. A long one is set smaller before it is cut.
Text {
    id: label

    required property RVSettingsCell setting

    text: label.setting.title
    textFormat: Text.PlainText
    font.family: label.setting.font.family
    font.pixelSize: label.setting.font.pixelSize
    fontSizeMode: Text.HorizontalFit
    minimumPixelSize: 10
    elide: Text.ElideMiddle
    color: "#1d2b36"
    horizontalAlignment: Text.AlignRight
    verticalAlignment: Text.AlignVCenter
}
