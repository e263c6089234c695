// An item of the queue, with the button that removes it from the queue.
import QtQuick
import Tessaly.Controls
import Tessaly.Model

MarrowListRow {
    id: row

    required property string name
    required property string sizeText
    required property nodeHandle node

    signal removed

    control: remove
    implicitHeight: 40

    Text {
        objectName: "name"
        x: 14
        y: 4
        width: remove.x - 10 - x
        text: row.name
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        color: Theme.ink
        font.family: Theme.uiFamily
        font.pixelSize: 12
    }

    Text {
        objectName: "size"
        x: 14
        y: 21
        text: row.sizeText
        color: Theme.secondary
        font.family: Theme.uiFamily
        font.pixelSize: 11
    }

    MarrowButton {
        id: remove

        objectName: "remove"
        focus: true
        x: parent.width - width - 14
        y: Math.round((parent.height - height) / 2)
        width: 22
        height: 22
        opacity: pressed ? 0.7 : 1
        focusRadius: 5
        // The list handles Tab, since the next row may not be built yet.
        focusPolicy: Qt.ClickFocus
        onClicked: row.removed()

        Accessible.name: `Remove ${row.name} from queue`

        contentItem: Item {
            Symbol {
                objectName: "symbol"
                anchors.centerIn: parent
                name: "xmark"
                size: 10
                bold: true
                color: remove.hovered || remove.pressed ? Theme.ink : Theme.muted
            }
        }
    }
}
