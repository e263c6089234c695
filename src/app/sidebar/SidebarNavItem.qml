// An entry of the sidebar that shows a pane or starts an action, highlighted while its pane is
// shown.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

MarrowButton {
    id: item

    property bool active: false
    // A short text at the right end; empty for none.
    property string badge: ""
    property color badgeColor: active ? Theme.accent : Theme.muted

    symbolSize: 12
    symbolColor: active ? Theme.accent : Theme.muted
    labelSize: 12
    labelColor: active ? Theme.ink : Theme.secondary
    leftPadding: 8
    rightPadding: 8
    topPadding: 6
    bottomPadding: 6
    spacing: 8
    opacity: !enabled ? 0.45 : pressed ? 0.8 : 1
    focusRadius: 6

    Accessible.description: badge

    contentItem: SidebarLabel {
        symbol: item.symbol
        symbolSize: item.symbolSize
        symbolColor: item.symbolColor
        symbolWidth: 16
        gap: item.spacing
        text: item.text
        textSize: item.labelSize
        textColor: item.labelColor
        badge: item.badge
        badgeColor: item.badgeColor
    }

    KeyboardGoesOn {
        control: item
    }

    background: RoundedPanel {
        objectName: "background"
        radius: 6
        color: item.active ? Qt.alpha(Theme.accent, 0.14) : "transparent"
    }
}
