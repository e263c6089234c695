// One of the window's own three buttons: a small disc that tells what it does while the pointer or
// the keyboard is on one of them.
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
    // A click leaves the keyboard where it is, and with what lies over the window.
    focusPolicy: Qt.TabFocus

    background: RoundedPanel {
        objectName: "background"
        radius: 6
        color: button.tint
        outlineColor: Theme.windowOutline
        outlineWidth: 0.5
    }
}
