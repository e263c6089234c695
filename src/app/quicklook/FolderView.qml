// The content of a folder.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

ScrollList {
    id: view

    visible: preview.body === PreviewScreen.Folder
    focus: visible
    model: preview.rows

    Accessible.name: preview.description

    header: Item {
        height: 10
    }
    footer: Item {
        height: 10
    }

    delegate: Item {
        id: row

        required property string symbol
        required property string name
        required property string value

        objectName: "item"
        width: ListView.view.width
        height: 28

        Accessible.role: Accessible.ListItem
        Accessible.name: value !== "" ? name + ", " + value : name

        Symbol {
            x: 20
            anchors.verticalCenter: parent.verticalCenter
            name: row.symbol
            size: 12
            color: row.symbol === "folder.fill" ? Theme.accent : Theme.muted
        }

        Text {
            objectName: "itemName"
            anchors.left: parent.left
            anchors.leftMargin: 46
            anchors.right: itemSize.left
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            text: row.name
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 12
        }

        Text {
            id: itemSize

            objectName: "itemSize"
            anchors.right: parent.right
            anchors.rightMargin: 22
            anchors.verticalCenter: parent.verticalCenter
            text: row.value
            textFormat: Text.PlainText
            color: Theme.muted
            font.family: Theme.monoFamily
            font.pixelSize: 11
        }
    }
}
