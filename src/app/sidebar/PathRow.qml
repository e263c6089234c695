// A pinned or recent folder: a click on its name scans it, the star pins or unpins it.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

RoundedPanel {
    id: row

    required property SidebarState actions
    required property pathHandle path
    required property string name
    required property string place
    required property bool pinned

    implicitHeight: star.height + 6
    radius: 6
    color: Theme.chipFill

    MarrowButton {
        id: label

        objectName: "pathLabel"
        x: 6
        y: 3
        width: star.x - 6 - x
        height: star.height
        enabled: !row.actions.scanning
        opacity: !enabled ? 0.45 : pressed ? 0.7 : 1
        text: row.name
        symbol: "folder"
        symbolSize: 11
        symbolColor: Theme.muted
        labelSize: 12
        focusRadius: 4
        onClicked: row.actions.scanPath(row.path)

        Accessible.description: row.place

        KeyboardGoesOn {
            control: label
        }

        contentItem: SidebarLabel {
            symbol: label.symbol
            symbolSize: label.symbolSize
            symbolColor: label.symbolColor
            gap: 6
            text: label.text
            textSize: label.labelSize
            textColor: label.labelColor
        }
    }

    SidebarIconButton {
        id: star

        objectName: "star"
        x: parent.width - width - 6
        y: 3
        symbol: row.pinned ? "star.fill" : "star"
        symbolSize: 10
        symbolColor: row.pinned ? Theme.warning : Qt.alpha(Theme.muted, 0.6)
        help: row.pinned ? "Unpin" : "Pin folder"
        target: row.place
        onClicked: {
            // Unpinning removes this row, so the focus moves on first.
            if (row.pinned && activeFocus)
                nextItemInFocusChain().forceActiveFocus(focusReason)
            row.actions.togglePin(row.path)
        }
    }
}
