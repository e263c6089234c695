// A symbol, a label, and the track of a switch with its knob at the right end.
import QtQuick
import Tessaly.Controls

Item {
    id: row

    required property bool on
    required property string symbol
    required property real symbolSize
    required property color symbolColor
    required property real symbolWidth
    required property string text
    required property real textSize
    required property color textColor

    implicitWidth: label.x + Math.ceil(label.implicitWidth) + 8 + track.width
    implicitHeight: Math.max(sign.height, label.implicitHeight, track.height)

    Symbol {
        id: sign

        objectName: "symbol"
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(row.symbolWidth, implicitWidth)
        name: row.symbol
        size: row.symbolSize
        color: row.symbolColor
    }

    Text {
        id: label

        objectName: "label"
        anchors.verticalCenter: parent.verticalCenter
        x: sign.width > 0 ? sign.width + 8 : 0
        width: track.x - 8 - x
        text: row.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: row.textColor
        font.family: Theme.uiFamily
        font.pixelSize: row.textSize
    }

    RoundedPanel {
        id: track

        objectName: "track"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 15
        radius: height / 2
        color: row.on ? Theme.accent : Theme.switchTrack

        RoundedPanel {
            objectName: "knob"
            x: row.on ? parent.width - width - 2 : 2
            y: 2
            width: 11
            height: 11
            radius: height / 2
            color: Theme.ink
        }
    }
}
