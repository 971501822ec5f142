import QtQuick
import Seedmote.Platform

// A table with what moves it: touch, wheel and keys. Children of `header` stand in the content, as wide as that:
// above the first row, at a height below 0, they come into view when the content is pulled down. Those of
// `emptySlot` show while there are no rows.
Item {
    id: root

    required property TableView table
    required property Component delegate
    property Component headerDelegate: null
    property string label
    default property alias emptySlot: empty.data
    property alias header: header.data

    Accessible.role: Accessible.List
    Accessible.name: root.label
    activeFocusOnTab: root.table.scrollEnabled

    onActiveFocusChanged: root.table.setHasKeys(root.activeFocus)
    Keys.onPressed: event => event.accepted = root.table.pressKey(event.key, event.isAutoRepeat)

    // What lies below is not pointed at.
    HoverHandler {
        blocking: true
    }

    Rectangle {
        anchors.fill: parent
        color: root.table.backgroundColor
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        clip: true
        interactive: root.table.scrollEnabled
        flickableDirection: Flickable.VerticalFlick
        contentWidth: width
        contentHeight: root.table.contentHeight
        topMargin: root.table.insetTop
        bottomMargin: root.table.insetBottom
        onDragStarted: {
            glide.stop();
            root.table.beginDragging();
        }
        // A pulled content glides back; a flick starts right after the end of its drag.
        onDragEnded: root.table.endDragging(flickable.verticalOvershoot !== 0)
        onFlickStarted: root.table.beginDecelerating()

        Item {
            id: header

            width: flickable.width
        }

        TableRows {
            y: flickable.contentY
            width: flickable.width
            height: flickable.height
            contentY: flickable.contentY
            table: root.table
            delegate: root.delegate
            headerDelegate: root.headerDelegate
        }
    }

    Item {
        id: empty

        anchors.fill: parent
        visible: root.table.empty
    }

    FocusRing {
        visible: root.activeFocus && !root.table.markShown
    }

    ScrollIndicator {
        flickable: flickable
        movesByItself: glide.running && !root.activeFocus
        anchors.right: parent.right
        anchors.rightMargin: 2
    }

    NumberAnimation {
        id: glide

        target: flickable
        property: "contentY"
        duration: 300
        easing.type: Easing.InOutQuad
    }

    Connections {
        target: root.table

        function onScrollRequested(offset: real, animated: bool) {
            flickable.cancelFlick();
            glide.stop();
            if (animated) {
                glide.to = offset;
                glide.start();
            } else {
                flickable.contentY = offset;
            }
        }

        function onKeysWanted() {
            root.forceActiveFocus(Qt.ShortcutFocusReason);
        }

        // What glided to a place that is no more would stay beyond the end.
        function onLaidOut() {
            if (glide.running && glide.to !== root.table.clampedOffset(glide.to)) {
                glide.stop();
                flickable.returnToBounds();
            }
        }
    }
}
