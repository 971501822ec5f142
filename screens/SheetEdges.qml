import QtQuick

// The edges of a sheet that slides over others: a hairline at its left, and at its right a shadow on what it
// covers, as dark as it is lifted.
Item {
    id: edges

    // 0 where the sheet lies beside the others, 1 and more where it covers them.
    property real lifted

    Rectangle {
        x: edges.width
        width: 8
        height: edges.height
        opacity: Math.max(0, Math.min(1, edges.lifted))
        visible: opacity > 0

        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: "#301d2b36"
            }
            GradientStop {
                position: 1
                color: "#001d2b36"
            }
        }
    }

    Rectangle {
        width: 1
        height: edges.height
        color: "#d3e3eb"
    }
}
