import QtQuick

// Stands above a part of a panel.
Text {
    textFormat: Text.PlainText
    color: "#1d2b36"
    font.pixelSize: 16
    font.weight: Font.DemiBold
    verticalAlignment: Text.AlignVCenter
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
