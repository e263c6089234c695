// One step of the breadcrumb bar.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: chip

    required property bool current

    labelSize: 11
    labelColor: current ? Theme.ink : Theme.muted
    symbolSize: 10
    symbolColor: current ? Theme.accent : Theme.muted
    leftPadding: 8
    rightPadding: 8
    topPadding: 4
    bottomPadding: 4
    opacity: pressed ? 0.8 : 1
    focusRadius: 6

    KeyboardGoesOn {
        control: chip
    }

    background: RoundedPanel {
        objectName: "background"
        radius: 6
        color: chip.current ? Qt.alpha(Theme.accent, 0.14) : Theme.chipFill
        outlineColor: chip.current ? Qt.alpha(Theme.accent, 0.3) : Theme.chipOutline
        outlineWidth: 1
    }
}
