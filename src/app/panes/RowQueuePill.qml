// The button at the right edge of a row that adds its item to the cleanup queue.
import QtQuick
import Tessaly.Panes

RowPill {
    // Of the item, for assistive tools.
    required property string name

    objectName: "queueRow"
    x: parent.width - width
    text: "Queue"

    Accessible.name: `Queue ${name}`
}
