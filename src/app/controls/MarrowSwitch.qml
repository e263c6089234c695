// A small switch with a symbol and a label before it; a click anywhere on it counts. It shows the
// value of `on` and never changes it: a click only requests the change.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    required property bool on
    // The width reserved for the symbol, so that labels below each other are aligned.
    property real symbolWidth: 0

    labelSize: 12
    focusRadius: 6
    // Makes it a check box for assistive tools.
    checkable: true
    checked: on
    // Restores the binding, which the template's own toggling has replaced.
    onClicked: checked = Qt.binding(() => control.on)

    Accessible.onToggleAction: control.press()

    contentItem: SwitchLabel {
        on: control.on
        symbol: control.symbol
        symbolSize: control.symbolSize
        symbolColor: control.symbolColor
        symbolWidth: control.symbolWidth
        text: control.text
        textSize: control.labelSize
        textColor: control.labelColor
    }
}
