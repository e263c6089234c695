// What every button of the program has in common: a symbol and a label in one row, a keyboard way to
// it (Tab, then Space or Return), a ring that shows the focus, and a name for assistive tools.
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
    // The corners of the focus ring.
    property real focusRadius: 8

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true

    Accessible.role: Accessible.Button
    Accessible.name: control.text
    Accessible.focusable: true
    Accessible.onPressAction: control.click()

    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) control.click() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) control.click() }

    contentItem: Item {
        // Whole points, so that what stands beside the button starts on a pixel.
        implicitWidth: Math.ceil(row.implicitWidth)
        implicitHeight: Math.ceil(row.implicitHeight)

        Row {
            id: row

            x: Math.round((parent.width - width) / 2)
            y: Math.round((parent.height - height) / 2)
            spacing: control.symbol !== "" && control.text !== "" ? 6 : 0

            Symbol {
                objectName: "symbol"
                y: Math.round((row.height - height) / 2)
                name: control.symbol
                size: control.symbolSize
                color: control.symbolColor
            }

            Text {
                objectName: "label"
                y: Math.round((row.height - height) / 2)
                visible: text !== ""
                text: control.text
                textFormat: Text.PlainText
                color: control.labelColor
                font.family: Theme.uiFamily
                font.pixelSize: control.labelSize
                font.weight: control.labelWeight
            }
        }
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
