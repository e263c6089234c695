// The base of all buttons: a symbol and a label in one row, operated by mouse and keyboard (Tab,
// then Space or Return), with a focus ring and an accessible name.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

T.Button {
    id: control

    // The name of a symbol before the label; empty for none.
    property string symbol: ""
    property real symbolSize: labelSize
    property color symbolColor: labelColor
    property real labelSize: 12
    property int labelWeight: Font.Normal
    property color labelColor: Theme.ink
    // The radius of the focus ring's corners.
    property real focusRadius: 8

    // A click by keyboard or assistive tools.
    function press() {
        if (enabled)
            clicked()
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: control.text
    Accessible.focusable: true
    Accessible.onPressAction: control.press()

    // Space with Control, Alt or Meta is a shortcut of a command, even of a disabled one.
    Keys.onSpacePressed: event => event.accepted = (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier)) !== 0
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) control.press() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) control.press() }

    contentItem: SymbolLabel {
        symbol: control.symbol
        symbolSize: control.symbolSize
        symbolColor: control.symbolColor
        text: control.text
        textSize: control.labelSize
        textWeight: control.labelWeight
        textColor: control.labelColor
    }

    RoundedPanel {
        objectName: "focusRing"
        x: -3
        y: -3
        width: control.width + 6
        height: control.height + 6
        radius: control.focusRadius + 3
        visible: control.visualFocus
        outlineColor: Qt.alpha(Theme.accent, 0.9)
        outlineWidth: 2
    }
}
