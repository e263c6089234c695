// The button at the right edge of a row that adds its item to the cleanup queue.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

MarrowPill {
    required property ListPaneRow row
    // Of the item, for assistive tools.
    required property string name

    objectName: "queueRow"
    x: parent.width - width
    y: Math.round((parent.height - height) / 2)
    focusPolicy: row.isTabStop ? Qt.StrongFocus : Qt.ClickFocus
    text: "Queue"
    active: false

    Accessible.checkable: false
    Accessible.name: `Queue ${name}`
}
