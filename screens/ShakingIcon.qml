import QtQuick
import Seedmote.Platform
import Seedmote.Screens

// A torrent's state; shakes while the torrent is selected.
SharpImage {
    id: icon

    required property RVTorrentListCell torrent

    property real angle

    picture: icon.torrent.imageStatus
    fillMode: Image.PreserveAspectFit
    rotation: icon.torrent.shaking ? icon.angle : 0

    Rectangle {
        anchors.fill: parent
        color: icon.torrent.imageFill
    }

    SequentialAnimation on angle {
        running: icon.torrent.shaking && icon.visible
        loops: Animation.Infinite

        NumberAnimation {
            from: -icon.torrent.shakeDegrees
            to: icon.torrent.shakeDegrees
            duration: icon.torrent.shakeMilliseconds
        }
        NumberAnimation {
            from: icon.torrent.shakeDegrees
            to: -icon.torrent.shakeDegrees
            duration: icon.torrent.shakeMilliseconds
        }
    }
}
