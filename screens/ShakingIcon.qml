import QtQuick
import Seedmote.Screens

// A torrent's state; shakes while the torrent is selected.
Image {
    id: icon

    required property RVTorrentListCell torrent

    property real angle

    source: icon.torrent.imageStatus
    fillMode: Image.PreserveAspectFit
    smooth: true
    rotation: icon.torrent.shaking ? icon.angle : 0

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
