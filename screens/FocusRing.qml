import QtQuick

// Around what takes keys, while it has them.
Rectangle {
    anchors.fill: parent
    color: "transparent"
    radius: 6
    border.width: 2
    border.color: "#1d76d8"
    visible: parent?.activeFocus ?? false
}
