// Which folder the map shows, how large it is, and what it holds.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Panes

ColumnLayout {
    id: header

    required property DiskMapState map

    spacing: 8

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: 10
        Layout.leftMargin: 14
        Layout.rightMargin: 14
        Layout.bottomMargin: bar.visible ? 0 : 10
        spacing: 7

        Symbol {
            name: "folder.fill"
            size: 11
            color: Theme.accent
        }

        Text {
            objectName: "name"
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            text: header.map.nodeName
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 12
            font.weight: Font.Bold
        }

        Text {
            objectName: "size"
            text: header.map.sizeText
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 12
            font.weight: Font.Bold
        }

        Text {
            objectName: "items"
            text: header.map.itemsText
            color: Theme.muted
            opacity: 0.8
            font.family: Theme.uiFamily
            font.pixelSize: 11
        }

        Item {
            Layout.fillWidth: true
        }

        Text {
            objectName: "stats"
            visible: text !== ""
            text: header.map.statsText
            color: Theme.muted
            font.family: Theme.monoFamily
            font.pixelSize: 10
        }
    }

    KindBreakdownBar {
        id: bar

        objectName: "breakdown"
        Layout.fillWidth: true
        Layout.leftMargin: 14
        Layout.rightMargin: 14
        Layout.bottomMargin: 8
        node: header.map.node
    }
}
