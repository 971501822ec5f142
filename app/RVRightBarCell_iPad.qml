import QtQuick
import Seedmote.App
import Seedmote.Platform

PressableRow {
    id: row

    readonly property RVRightBarCell button: row.cell as RVRightBarCell

    activeFocusOnTab: !row.button.blank
    Accessible.role: Accessible.Button
    Accessible.selectable: false

    SharpImage {
        anchors.centerIn: parent
        width: 32
        height: 32
        picture: row.button.customImageView
    }
}
