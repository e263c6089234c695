// The content of a row of the sidebar: a symbol, a name, and at the right end an optional short
// text. A name that is too long is elided.
import QtQuick
import Tessaly.Controls

Item {
    id: row

    required property string symbol
    required property real symbolSize
    required property color symbolColor
    // The width reserved for the symbol, so that the names of all rows are aligned.
    property real symbolWidth: 0
    required property real gap
    required property string text
    required property real textSize
    required property color textColor
    property string badge: ""
    property color badgeColor: Theme.muted

    implicitHeight: Math.max(sign.implicitHeight, label.implicitHeight)

    Symbol {
        id: sign

        objectName: "symbol"
        y: Math.round((parent.height - height) / 2)
        width: Math.max(row.symbolWidth, implicitWidth)
        name: row.symbol
        size: row.symbolSize
        color: row.symbolColor
    }

    Text {
        id: label

        objectName: "label"
        x: sign.width + row.gap
        y: Math.round((parent.height - height) / 2)
        width: (badgePanel.visible ? badgePanel.x - row.gap : parent.width) - x
        text: row.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: row.textColor
        font.family: Theme.uiFamily
        font.pixelSize: row.textSize
    }

    RoundedPanel {
        id: badgePanel

        objectName: "badge"
        visible: row.badge !== ""
        x: parent.width - width
        y: Math.round((parent.height - height) / 2)
        width: Math.ceil(badgeText.implicitWidth) + 12
        height: Math.ceil(badgeText.implicitHeight) + 4
        radius: height / 2
        color: Theme.badgeFill

        Text {
            id: badgeText

            objectName: "badgeText"
            x: 6
            y: 2
            text: row.badge
            color: row.badgeColor
            font.family: Theme.uiFamily
            font.pixelSize: 10
        }
    }
}
