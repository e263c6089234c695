// A small switch with a symbol and a label before it; all of it can be clicked. It shows what `on`
// says and never turns by itself: a click asks for the other state, and who answers may refuse.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    required property bool on
    // The room the symbol stands in, so that labels below each other line up.
    property real symbolWidth: 0

    labelSize: 12
    focusRadius: 6
    // This alone makes it a check box for assistive tools.
    checkable: true
    checked: on
    // The template has turned by itself; back to what stands.
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
