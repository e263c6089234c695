// A link whose target does not exist, with the button that adds it to the cleanup queue.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string name
    required property string place
    required property string target
    required property string kindText
    required property bool isLock
    required property nodeHandle node

    signal queued

    height: target !== "" ? 64 : 48
    CommandRow.node: node
    label: name + (isLock ? ", " + lock.text : "") + ", " + kindText + ", " + place + (target !== "" ? ", " + target : "")

    content: [
        Text {
            id: nameText

            objectName: "name"
            y: row.target !== "" ? 6 : 7
            width: Math.min(implicitWidth, kind.x - 14 - (row.isLock ? lock.width + 8 : 0))
            text: row.name
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold
            Accessible.ignored: true
        },
        RowBadge {
            id: lock

            objectName: "lock"
            x: nameText.width + 8
            y: nameText.y + Math.round((nameText.height - height) / 2)
            visible: row.isLock
            text: "lock"
        },
        Text {
            objectName: "place"
            y: nameText.y + 19
            width: kind.x - 14
            text: row.place
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11
            Accessible.ignored: true
        },
        Text {
            objectName: "target"
            y: nameText.y + 35
            width: kind.x - 14
            visible: text !== ""
            text: row.target
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.warning
            font.family: Theme.uiFamily
            font.pixelSize: 11
            Accessible.ignored: true
        },
        Text {
            id: kind

            objectName: "kind"
            x: queue.x - 14 - width
            width: 72
            height: parent.height
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            text: row.kindText
            textFormat: Text.PlainText
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11
            Accessible.ignored: true
        },
        RowQueuePill {
            id: queue

            row: row
            name: row.name
            onClicked: row.queued()
        }
    ]
}
