import QtQuick
import Seedmote.Platform

// The root of every row's layout: what an assistive technology finds of a row. A row that says nothing is none.
Item {
    id: row

    required property TableViewCell cell

    // Rows are made ready a little beyond what is to be seen, and stay while the window is hidden.
    readonly property bool inView: row.y + row.height > 0 && row.y < (row.parent?.height ?? 0)
        && row.Window.visibility !== Window.Hidden && row.Window.visibility !== Window.Minimized

    Accessible.ignored: row.cell.accessibleName.length + row.cell.accessibleDescription.length === 0
    Accessible.role: Accessible.ListItem
    Accessible.name: row.cell.accessibleName
    Accessible.description: row.cell.accessibleDescription
}
