// A symbol and a text in a row, centred in the item. Either may be missing. A text that is too long
// is elided, but never to the ellipsis alone: before that the symbol is hidden.
import QtQuick
import Tessaly.Controls

Item {
    id: pair

    required property string symbol
    required property real symbolSize
    required property color symbolColor
    required property string text
    required property real textSize
    required property int textWeight
    required property color textColor

    readonly property real gap: symbol !== "" && text !== "" ? 6 : 0
    // Space for the widest letter and an ellipsis.
    readonly property real leastText: Math.min(label.implicitWidth, 2 * textSize)
    readonly property bool showsSymbol: text === ""
        || width >= sign.implicitWidth + gap + leastText

    // Integer points, so that the next item starts on a pixel.
    implicitWidth: Math.ceil(sign.implicitWidth + gap + (text !== "" ? label.implicitWidth : 0))
    implicitHeight: Math.ceil(Math.max(sign.implicitHeight, text !== "" ? label.implicitHeight : 0))

    Row {
        id: row

        x: Math.round((pair.width - width) / 2)
        y: Math.round((pair.height - height) / 2)
        spacing: pair.gap

        Symbol {
            id: sign

            objectName: "symbol"
            visible: pair.showsSymbol
            y: Math.round((row.height - height) / 2)
            name: pair.symbol
            size: pair.symbolSize
            color: pair.symbolColor
        }

        Text {
            id: label

            objectName: "label"
            width: Math.max(0, Math.min(implicitWidth, pair.width - (pair.showsSymbol ? sign.width + pair.gap : 0)))
            elide: Text.ElideRight
            y: Math.round((row.height - height) / 2)
            visible: text !== ""
            text: pair.text
            textFormat: Text.PlainText
            color: pair.textColor
            font.family: Theme.uiFamily
            font.pixelSize: pair.textSize
            font.weight: pair.textWeight
        }
    }
}
