import QtQuick
import Seedmote.Platform

// The root of every row's layout: what an assistive technology finds of a row.
Item {
    id: row

    required property TableViewCell cell

    Accessible.role: Accessible.ListItem
    Accessible.name: row.cell.accessibleName
    Accessible.description: row.cell.accessibleDescription
    Accessible.selectable: true
    Accessible.selected: row.cell.selected
    Accessible.onPressAction: row.cell.press()
}
