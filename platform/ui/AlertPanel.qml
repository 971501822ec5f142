import QtQuick
import Seedmote.Platform

// An alert in front of everything: it covers its parent, and takes all touches and keys while it is shown.
Item {
    id: panel

    required property Alerts alerts

    visible: panel.alerts.shown
    opacity: panel.alerts.shown ? 1 : 0

    Behavior on opacity {
        enabled: panel.alerts.shown  // it goes at once

        NumberAnimation {
            duration: 150
        }
    }

    AlertKeys {
        id: keys

        alerts: panel.alerts
    }

    Rectangle {
        anchors.fill: parent
        color: "#66000000"
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onWheel: wheel => { wheel.accepted = true }
    }

    MultiPointTouchArea {
        anchors.fill: parent
        mouseEnabled: false
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(300, panel.width - 32)
        height: buttons.y + buttons.height
        radius: 10
        color: "#ffffff"

        Accessible.role: Accessible.Dialog
        Accessible.name: panel.alerts.title
        Accessible.description: panel.alerts.message

        Text {
            id: title

            x: 20
            y: 20
            width: parent.width - 40
            text: panel.alerts.title
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: "#1d2b36"
            font.pixelSize: 16
            font.weight: Font.DemiBold
            Accessible.ignored: true  // the dialog says it
        }

        // Long links are looked at by scrolling: the last line that fits is half a line.
        Flickable {
            id: scroll

            x: 20
            y: Math.round(title.y + title.height) + 8
            width: parent.width - 40
            height: Math.round(Math.min(message.height, metrics.height * 6.5, panel.height - 160))
            contentHeight: message.height
            interactive: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            Text {
                id: message

                width: scroll.width
                text: panel.alerts.message
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                color: "#566774"
                font.pixelSize: 13
                Accessible.ignored: true

                onTextChanged: scroll.contentY = 0
            }

            FontMetrics {
                id: metrics

                font: message.font
            }
        }

        Item {
            y: scroll.y
            width: parent.width

            ScrollIndicator {
                flickable: scroll
                x: parent.width - 10
                opacity: 0.7  // says that there is more
            }
        }

        Item {
            id: buttons

            readonly property int last: panel.alerts.buttons.length - 1

            y: scroll.y + scroll.height + 20
            width: parent.width
            height: 48

            AlertButton {
                visible: buttons.last > 0
                width: buttons.width / 2
                title: panel.alerts.buttons[0] ?? ""
                ringed: keys.button === 0
                onPressed: panel.alerts.press(0)
            }

            AlertButton {
                x: buttons.width - width
                width: buttons.last > 0 ? buttons.width / 2 : buttons.width
                title: panel.alerts.buttons[buttons.last] ?? ""
                last: true
                ringed: keys.button === buttons.last
                divided: buttons.last > 0
                onPressed: panel.alerts.press(buttons.last)
            }
        }
    }
}
