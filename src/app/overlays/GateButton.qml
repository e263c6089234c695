// A button of the gate, which looks like the thing to do next or like another thing that may be
// done. It keeps its size when that changes.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: button

    property bool isPrimary: false

    width: 150
    height: 34
    labelSize: isPrimary ? 13 : 12
    labelWeight: isPrimary ? Font.DemiBold : Font.Medium
    labelColor: isPrimary ? "white" : Theme.ink
    opacity: pressed ? 0.75 : 1
    focusRadius: 8

    background: RoundedPanel {
        objectName: "background"
        radius: 8
        color: button.isPrimary ? Theme.accent : Theme.bg3
        endColor: button.isPrimary ? Theme.accentDeep : Theme.bg3
        outlineColor: Qt.rgba(1, 1, 1, button.isPrimary ? 0.18 : 0.09)
        outlineWidth: 1
        shadowColor: button.isPrimary ? Qt.alpha(Theme.accent, button.pressed ? 0.15 : 0.35)
                                      : "transparent"
        shadowRadius: 6
        shadowOffset: 2
    }
}
