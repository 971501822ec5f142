import QtQuick
import Seedmote.Platform
import Seedmote.Screens

// A torrent's state; shakes while the torrent is selected. It goes from one side to the other in four steps: as
// smooth to the eye as with every frame of the screen, for half the work.
SharpImage {
    id: icon

    required property RVTorrentListCell torrent
    required property TableRow tableRow

    property int step: 0  // of eight, there and back

    // Rows are made ready a little beyond what is to be seen, and stay while the window is hidden. Looked at for the
    // one that shakes alone.
    readonly property bool moves: icon.torrent.shaking && icon.visible && icon.tableRow.y + icon.tableRow.height > 0
        && icon.tableRow.y < (icon.tableRow.parent?.height ?? 0)
        && icon.Window.visibility !== Window.Hidden && icon.Window.visibility !== Window.Minimized

    picture: icon.torrent.imageStatus
    rotation: icon.torrent.shaking ? icon.torrent.shakeDegrees * (1 - Math.abs(icon.step - 4) / 2) : 0

    Rectangle {
        anchors.fill: parent
        color: icon.torrent.imageFill
        visible: icon.torrent.imageFill.a > 0
    }

    Timer {
        running: icon.moves
        repeat: true
        interval: icon.torrent.shakeMilliseconds / 4
        onTriggered: icon.step = (icon.step + 1) % 8
    }
}
