import QtQuick

// A line of figures: smaller and closer where there is little room, rather than cut.
TorrentLabel {
    id: line

    readonly property bool narrow: line.width < 250

    fontSizeMode: Text.HorizontalFit
    minimumPixelSize: 7
    font.letterSpacing: line.narrow ? -0.5 : 0
    font.wordSpacing: line.narrow ? -0.5 : 0
}
