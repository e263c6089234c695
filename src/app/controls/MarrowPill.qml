// A small button in a row of choices, tinted while it is the current choice.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    required property bool active
    property color tint: Theme.accent

    labelSize: 12
    labelWeight: active ? Font.DemiBold : Font.Normal
    labelColor: active ? tint : Theme.muted
    leftPadding: 11
    rightPadding: 11
    topPadding: 5
    bottomPadding: 5
    opacity: pressed ? 0.8 : 1
    focusRadius: height / 2

    Accessible.checkable: true
    Accessible.checked: active

    background: RoundedPanel {
        objectName: "background"
        radius: control.height / 2
        color: control.active ? Qt.alpha(control.tint, 0.18) : Theme.softFill
        outlineColor: control.active ? Qt.alpha(control.tint, 0.45) : Theme.controlOutline
        outlineWidth: 1
    }
}
