PullBar {
    iconX: 18
    textX: 66
    bottomMargin: 16
    rightMargin: 18
    textSize: 14
}
