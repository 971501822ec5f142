FilterRow {
    titleSize: 16
}
