import QtQuick
import Seedmote.App
import Seedmote.Platform
import Seedmote.Screens

// The regions of the root screen, alike on phone and tablet. The other views are stacked into it at launch;
// what comes up on occasion stands above them all (FrontView).
ViewItem {
    id: main

    required property RVMainViewController controller

    geometry: main.controller.view

    ViewItem {
        geometry: main.controller.statusBarView

        RVSessionStatController_iPad {
            controller: main.controller.sessionStatController
        }
    }

    ViewItem {
        geometry: main.controller.topbarView
    }

    ViewItem {
        geometry: main.controller.torrentInfoView
    }

    // Behind the action bar, which lets through what lies below it.
    ViewItem {
        geometry: main.controller.rightBarView

        Rectangle {
            anchors.fill: parent
            color: "#ffffff"
        }
        Rectangle {
            width: 1
            height: parent.height
            color: "#d3e3eb"
        }
        MouseArea {
            anchors.fill: parent
        }
    }

    ViewItem {
        geometry: main.controller.adView
    }
}
