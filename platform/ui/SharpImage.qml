import QtQuick
import QtQuick.Window

// A picture of the resources, sharp however large its window is: of the drawings for scales 1, 2 and 3 it takes
// the smallest that has a pixel for each of the screen's. (Left alone, an image goes by the screen's scale
// and not by that of the items around it.)
Image {
    id: image

    // Of the drawing for scale 1; a PNG file. Empty for none.
    required property url picture

    // Pixels of the screen for a point. The items around may be scaled along with the window, and tell nobody.
    readonly property real pixels: image.parent && image.Window.width + image.Window.height > 0
        ? image.parent.mapToItem(null, 0, 0, 1, 1).width * Screen.devicePixelRatio : 1

    readonly property string drawing: image.pixels > 2.01 ? "@3x.png" : image.pixels > 1.01 ? "@2x.png" : ".png"

    source: String(image.picture).replace(".png", image.drawing)
    smooth: true
}
