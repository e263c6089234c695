// One of the window's three buttons: a small disc, with a symbol while the pointer or the focus is
// on any of them.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: button

    required property color tint
    required property string sign
    required property bool lit

    symbol: lit ? sign : ""
    symbolSize: 8
    symbolColor: Theme.windowSymbol
    text: ""
    implicitWidth: 12
    implicitHeight: 12
    opacity: pressed ? 0.75 : 1
    focusRadius: 6
    // A click does not move the keyboard focus.
    focusPolicy: Qt.TabFocus

    background: RoundedPanel {
        objectName: "background"
        radius: 6
        color: button.tint
        outlineColor: Theme.windowOutline
        outlineWidth: 0.5
    }
}
