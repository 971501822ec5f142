import QtQuick
import Seedmote.Platform
import Seedmote.PlatformTests

ScrollingTable {
    id: scene

    required property FakeController controller

    table: scene.controller.table
    label: "Torrents"
    delegate: PressableRow {
        id: row

        readonly property FakeCell fake: row.cell as FakeCell

        Text {
            text: row.fake.title
        }
    }
}
