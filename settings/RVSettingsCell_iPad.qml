import QtQuick
import Seedmote.Platform
import Seedmote.Settings

TableRow {
    id: row

    readonly property RVSettingsCell setting: row.cell as RVSettingsCell

    Accessible.ignored: true  // the control has the name

    Rectangle {
        anchors.fill: parent
        color: row.setting.backgroundColor
    }

    HoverTint {}

    Text {
        x: 20
        width: accessory.x - 16 - x
        height: row.height
        text: row.setting.label
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: row.setting.font
        color: "#1d2b36"
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    // The controls can be touched over the whole height of the row.
    Item {
        id: accessory

        x: row.width - 20 - width
        width: row.setting.accessorySize.width
        height: row.height

        SettingTextField {
            anchors.fill: parent
            cell: row.cell
            visible: row.setting.hasTextField
        }

        SettingSwitch {
            anchors.fill: parent
            setting: row.setting
            visible: row.setting.hasSwitch
        }

        SettingLink {
            anchors.fill: parent
            setting: row.setting
            visible: row.setting.hasButton
        }

        SettingLabel {
            anchors.fill: parent
            setting: row.setting
            visible: row.setting.hasStaticLabel
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: row.setting.label + ", " + row.setting.title
        }
    }

    Rectangle {
        x: 20
        y: row.height - height
        width: row.width - x
        height: 1
        color: "#d3e3eb"
    }
}
