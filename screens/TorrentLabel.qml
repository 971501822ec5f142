import QtQuick

// One line of a row. A daemon's texts are shown as they are, never as markup.
Text {
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft
    maximumLineCount: 1
    elide: Text.ElideRight
    color: "#566774"
}
