import QtQuick
import Seedmote.Platform
import Seedmote.Screens

ViewItem {
    id: panel

    required property RVTorrentDetailController controller

    geometry: panel.controller.view

    GestureArea {
        anchors.fill: parent
        recognizers: panel.controller.gestures
        // Nothing of it is left for keys or an assistive technology once it has gone.
        visible: panel.controller.shown || panel.x < panel.geometry.shownFrame.x

        Repeater {
            model: 5

            Rectangle {
                id: shadow

                required property int index

                anchors.fill: parent
                anchors.margins: -1 - shadow.index
                radius: 11 + shadow.index
                color: "#06123040"
            }
        }

        Rectangle {
            anchors.fill: parent
            radius: 10
            color: "#ffffff"
            border.color: "#c3d8e3"
        }

        // What is below must not scroll.
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.NoButton
            hoverEnabled: true
            onWheel: wheel => wheel.accepted = true
        }

        PanelTitle {
            x: 14
            height: files.y
            text: "Files"
        }

        PanelTitle {
            x: details.x + 10
            height: details.y
            text: "Information"
        }

        Rectangle {
            x: details.x
            y: 12
            width: 1
            height: panel.height - 24
            color: "#d3e3eb"
        }

        ViewItem {
            id: files

            geometry: panel.controller.fileListViewPos

            ViewItem {
                geometry: panel.controller.btnMoveLeft

                PanelTab {
                    anchors.fill: parent
                    atEnd: panel.controller.wholeShown
                    onPressed: panel.controller.pressBtnMoveLeft()
                }
            }

            ViewItem {
                geometry: panel.controller.fileListController.view

                ScrollingTable {
                    anchors.fill: parent
                    table: panel.controller.fileListController.table
                    label: "Files"
                    delegate: RVTorrentDetailFileListCell_iPad {}

                    EmptyNotice {
                        text: "No files are known yet."
                    }
                }
            }
        }

        ViewItem {
            id: details

            geometry: panel.controller.rightInfoListViewPos

            ViewItem {
                geometry: panel.controller.rightListController.view

                ScrollingTable {
                    anchors.fill: parent
                    table: panel.controller.rightListController.table
                    label: "Information"
                    delegate: RVTorrentDetailRightListCell_iPad {}
                }
            }
        }
    }
}
