import QtQuick
import Seedmote.App
import Seedmote.Platform

TableRow {
    id: row

    readonly property RVRightBarCell button: row.cell as RVRightBarCell

    Accessible.role: Accessible.Button
    Accessible.ignored: row.button.blank
    Accessible.selectable: false

    SharpImage {
        anchors.centerIn: parent
        width: 32
        height: 32
        picture: row.button.customImageView
    }
}
