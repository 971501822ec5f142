PullBar {
    iconX: 8
    textX: 48
    bottomMargin: 10
    rightMargin: 12
    textSize: 13
}
