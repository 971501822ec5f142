import QtQuick
import Seedmote.Platform
import Seedmote.Screens

// A state in the filter bar.
PressableRow {
    id: row

    required property int titleSize

    readonly property RVFilterBarCell filter: row.cell as RVFilterBarCell

    activeFocusOnTab: !row.filter.covered || row.activeFocus  // nothing that has the keys may refuse them

    Rectangle {
        anchors.fill: parent
        color: row.filter.backgroundColor
    }

    // In the strip that stays to be seen beside a torrent list at home.
    SharpImage {
        anchors.verticalCenter: parent.verticalCenter
        x: (50 - width) / 2
        picture: row.filter.image
    }

    Text {
        x: title.x + row.filter.shadowOffset.x
        y: title.y + row.filter.shadowOffset.y
        text: title.text
        textFormat: Text.PlainText
        color: row.filter.shadowColor
        font: title.font
        Accessible.ignored: true
    }

    Text {
        id: title

        anchors.verticalCenter: parent.verticalCenter
        x: 56
        text: row.filter.text
        textFormat: Text.PlainText
        color: row.filter.textColor
        font.pixelSize: row.titleSize
        Accessible.ignored: true  // the row says it
    }

    Rectangle {
        x: row.filter.separatorInset
        y: row.height - height
        width: row.width - x
        height: 1
        color: row.filter.separatorColor
    }
}
