FilterRow {
    titleSize: 14
}
