import QtQuick

// Says in the middle of an empty list why it is empty. Not as wide as that: when slid aside, a narrow list ends
// below the action bar.
Text {
    anchors.centerIn: parent
    width: Math.min(360, (parent?.width ?? 0) - 80)
    horizontalAlignment: Text.AlignHCenter
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: "#566774"
    font.pixelSize: 15
    lineHeight: 1.25
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
