import QtQuick

// The shadow that a panel casts beside it or below: dark at the left, or above.
Rectangle {
    id: shadow

    required property int orientation

    gradient: Gradient {
        orientation: shadow.orientation

        GradientStop {
            position: 0
            color: "#401d2b36"
        }
        GradientStop {
            position: 1
            color: "#001d2b36"
        }
    }
}
