import QtQuick
import Seedmote.App
import Seedmote.Platform

PressableRow {
    id: row

    readonly property RVRightBarCell button: row.cell as RVRightBarCell

    ring.border.color: "#00204a"  // dark, for the bar is half transparent
    hover.color: "#481d76d8"
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.selectable: false

    SharpImage {
        anchors.centerIn: parent
        width: 32
        height: 32
        picture: row.button.customImageView
    }
}
