// The button of the thing to do next.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    labelSize: 13
    labelWeight: Font.DemiBold
    labelColor: "white"
    leftPadding: 14
    rightPadding: 14
    topPadding: 8
    bottomPadding: 8
    opacity: pressed || !enabled ? 0.75 : 1
    focusRadius: 8

    background: RoundedPanel {
        objectName: "background"
        radius: 8
        color: Theme.accent
        endColor: Theme.accentDeep
        outlineColor: Qt.rgba(1, 1, 1, 0.18)
        outlineWidth: 1
        shadowColor: Qt.alpha(Theme.accent, control.pressed ? 0.15 : 0.35)
        shadowRadius: 6
        shadowOffset: 2
    }
}
