// A symbol and a text in one row, in the middle of the item. Either may be missing.
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

    // Whole points, so that what stands beside this starts on a pixel.
    implicitWidth: Math.ceil(row.implicitWidth)
    implicitHeight: Math.ceil(row.implicitHeight)

    Row {
        id: row

        x: Math.round((pair.width - width) / 2)
        y: Math.round((pair.height - height) / 2)
        spacing: pair.symbol !== "" && pair.text !== "" ? 6 : 0

        Symbol {
            objectName: "symbol"
            y: Math.round((row.height - height) / 2)
            name: pair.symbol
            size: pair.symbolSize
            color: pair.symbolColor
        }

        Text {
            objectName: "label"
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
