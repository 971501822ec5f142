import QtQuick
import Seedmote.Platform

// The root of every row's layout: what an assistive technology finds of a row. A row that says nothing is none.
Item {
    id: row

    required property TableViewCell cell

    Accessible.ignored: row.cell.accessibleName.length + row.cell.accessibleDescription.length === 0
    Accessible.role: Accessible.ListItem
    Accessible.name: row.cell.accessibleName
    Accessible.description: row.cell.accessibleDescription
}
