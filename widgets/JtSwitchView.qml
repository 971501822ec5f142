import QtQuick
import Seedmote.Platform
import Seedmote.Widgets

// A switch, where its frame says unless the layout around places it. The thumb stands out a little.
SwitchTouches {
    id: view

    // What an assistive technology calls it.
    property string label

    x: view.control.frame.x
    y: view.control.frame.y
    width: view.control.frame.width
    height: view.control.frame.height
    activeFocusOnTab: true

    Accessible.role: Accessible.CheckBox
    Accessible.name: view.label
    Accessible.checkable: true
    Accessible.checked: view.control.on
    Accessible.onPressAction: view.toggle()
    Accessible.onToggleAction: view.toggle()

    MaskedPicture {
        width: view.width
        height: view.height
        part: view.control.trackImageView
        partX: view.control.trackImageView.frame.x
        mask: view.control.trackMaskLayer
        pixels: overlay.pixels

        Behavior on partX {
            SwitchAnimation { control: view.control }
        }
    }

    SharpImage {
        id: overlay

        width: view.width
        height: view.height
        picture: view.control.overlayImageView.image.picture
    }

    Item {
        id: thumb

        x: view.control.thumbImageView.frame.x
        y: view.control.thumbImageView.frame.y
        visible: !view.control.maskedThumbView.image.exists

        Behavior on x {
            SwitchAnimation { control: view.control }
        }

        SharpImage {
            // On the screen's pixels, wherever a finger holds it.
            x: Math.round(thumb.x * pixels) / pixels - thumb.x
            width: view.control.thumbImageView.frame.width
            height: view.control.thumbImageView.frame.height
            picture: view.control.thumbImageView.image.picture
        }
    }

    MaskedPicture {
        width: view.width
        height: view.height
        visible: view.control.maskedThumbView.image.exists
        part: view.control.thumbImageView
        partX: thumb.x
        mask: view.control.maskedThumbView
        pixels: overlay.pixels
    }

    // The keyboard's focus. Drawn on the screen's pixels and not scaled, so that its corners are smooth.
    Rectangle {
        x: -6
        y: -6
        width: (view.width + 12) * overlay.pixels
        height: (view.height + 12) * overlay.pixels
        transformOrigin: Item.TopLeft
        scale: 1 / overlay.pixels
        visible: view.activeFocus
        radius: 9 * overlay.pixels
        color: "transparent"
        border.width: 2 * overlay.pixels
        border.color: "#1d76d8"
    }
}
