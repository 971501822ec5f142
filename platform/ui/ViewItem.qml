import QtQuick
import Seedmote.Platform

// The root of a view's layout: stands where the view's geometry says, and goes there as slowly as that says.
Item {
    id: item

    required property ViewGeometry geometry

    x: item.geometry.shownFrame.x
    y: item.geometry.shownFrame.y
    z: item.geometry.order
    width: item.geometry.shownFrame.width
    height: item.geometry.shownFrame.height
    opacity: item.geometry.alpha
    visible: item.geometry.inParent && item.opacity > 0

    Behavior on x {
        ViewAnimation { geometry: item.geometry }
    }
    Behavior on y {
        ViewAnimation { geometry: item.geometry }
    }
    Behavior on width {
        ViewAnimation { geometry: item.geometry }
    }
    Behavior on height {
        ViewAnimation { geometry: item.geometry }
    }
    Behavior on opacity {
        ViewAnimation { geometry: item.geometry }
    }

    Rectangle {
        anchors.fill: parent
        color: item.geometry.backgroundColor
        visible: item.geometry.backgroundColor.a > 0
    }
}
