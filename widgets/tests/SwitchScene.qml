import QtQuick
import Seedmote.Widgets

// A switch in surroundings that scroll.
Flickable {
    id: scene
    required property JtSwitch control
    width: 300; height: 150
    contentHeight: 400
    transformOrigin: Item.TopLeft

    JtSwitchView { control: scene.control }
}
