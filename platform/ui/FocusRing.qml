import QtQuick

// Around what takes keys, while it has them.
Rectangle {
    anchors.fill: parent
    z: 1
    color: "transparent"
    border.width: 2
    border.color: "#1d76d8"
    visible: parent?.activeFocus ?? false
}
