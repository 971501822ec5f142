import QtQuick
import Seedmote.Platform
import Seedmote.PlatformTests

ViewItem {
    id: scene

    required property FakeController controller

    geometry: scene.controller.view

    GestureArea {
        anchors.fill: parent
        recognizers: scene.controller.gestures

        ScrollingTable {
            anchors.fill: parent
            table: scene.controller.table
            delegate: TableRow {}
        }
    }
}
