import QtQuick
import Seedmote.App

// A card at the foot of the main view: what waits to be added, why, and what can be done about it.
Rectangle {
    id: bar

    required property InboxNotice notice

    visible: bar.notice.text !== ""
    height: Math.max(label.implicitHeight + 20, 52)
    radius: 10
    color: "#ffffff"
    border.color: "#b9cdd8"

    Accessible.role: Accessible.AlertMessage
    Accessible.name: bar.notice.text

    // Nothing below is touched through it.
    MouseArea {
        anchors.fill: parent
        onWheel: wheel => { wheel.accepted = true }
    }

    Text {
        id: label

        anchors.left: parent.left
        anchors.right: choices.left
        anchors.margins: 14
        anchors.verticalCenter: parent.verticalCenter
        text: bar.notice.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        maximumLineCount: 4
        elide: Text.ElideRight
        color: "#1d2b36"
        font.pixelSize: 13
        Accessible.ignored: true
    }

    Row {
        id: choices

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        visible: bar.notice.canChoose

        InboxButton {
            title: "Try again"
            onPressed: bar.notice.tryAgain()
        }

        InboxButton {
            title: "Drop"
            onPressed: bar.notice.drop()
        }
    }
}
