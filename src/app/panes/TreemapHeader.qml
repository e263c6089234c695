// The folder that the map shows: its name, size and content.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

Item {
    id: header

    required property DiskMapState map

    implicitHeight: bar.empty ? row.y + row.height + 10 : bar.y + bar.height + 8

    Row {
        id: row

        x: 14
        y: 10
        spacing: 7

        Symbol {
            id: symbol

            objectName: "folder"
            anchors.verticalCenter: parent.verticalCenter
            name: "folder.fill"
            size: 11
            color: Theme.accent
        }

        Text {
            id: name

            // The width that the other texts leave.
            readonly property real room: header.width - 2 * row.x - 4 * row.spacing - symbol.width
                - size.implicitWidth - items.implicitWidth - stats.implicitWidth
                - (unreadable.visible ? unreadable.width + stats.gap : 0)

            objectName: "name"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(0, Math.min(implicitWidth, room))
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
            id: size

            objectName: "size"
            anchors.verticalCenter: parent.verticalCenter
            text: header.map.sizeText
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 12
            font.weight: Font.Bold
        }

        Text {
            id: items

            objectName: "items"
            anchors.verticalCenter: parent.verticalCenter
            text: header.map.itemsText
            color: Theme.muted
            opacity: 0.8
            font.family: Theme.uiFamily
            font.pixelSize: 11
        }
    }

    Text {
        id: stats

        // As wide as a space of its font.
        readonly property real gap: 6

        objectName: "stats"
        anchors.right: unreadable.visible ? unreadable.left : parent.right
        anchors.rightMargin: unreadable.visible ? gap : row.x
        anchors.verticalCenter: row.verticalCenter
        visible: text !== ""
        text: header.map.statsText
        color: Theme.muted
        font.family: Theme.monoFamily
        font.pixelSize: 10
    }

    UnreadableFigure {
        id: unreadable

        objectName: "unreadable"
        anchors.right: parent.right
        anchors.rightMargin: row.x
        anchors.verticalCenter: row.verticalCenter
        map: header.map
    }

    KindBreakdownBar {
        id: bar

        objectName: "breakdown"
        x: row.x
        y: row.y + row.height + 8
        width: parent.width - 2 * x
        node: header.map.node
    }
}
