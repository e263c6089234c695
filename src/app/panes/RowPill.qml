// A button in a row, in the middle of its height.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

MarrowPill {
    required property ListPaneRow row

    y: Math.round((parent.height - height) / 2)
    focusPolicy: row.isTabStop ? Qt.StrongFocus : Qt.ClickFocus
    active: false

    Accessible.checkable: false
}
