// A button with a filled background, primary or secondary. It may change between the two while it
// is shown; unless its size is set, its padding then changes, too.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    required property bool isPrimary

    labelSize: isPrimary ? 13 : 12
    labelWeight: isPrimary ? Font.DemiBold : Font.Medium
    labelColor: Theme.ink
    leftPadding: isPrimary ? 14 : 12
    rightPadding: leftPadding
    topPadding: isPrimary ? 8 : 7
    bottomPadding: topPadding
    opacity: !enabled ? (isPrimary ? 0.75 : 0.45) : pressed ? 0.75 : 1
    focusRadius: 8

    background: RoundedPanel {
        objectName: "background"
        radius: 8
        color: control.isPrimary ? Theme.accent : Theme.bg3
        endColor: control.isPrimary ? Theme.accentDeep : Theme.bg3
        outlineColor: control.isPrimary ? Theme.primaryOutline : Theme.secondaryOutline
        outlineWidth: 1
        shadowColor: control.isPrimary ? Qt.alpha(Theme.accent, control.pressed ? 0.15 : 0.35)
                                       : "transparent"
        shadowRadius: 6
        shadowOffset: 2
    }
}
