// One of the largest files, with the button that adds it to the cleanup queue.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string name
    required property string place
    required property string kindText
    required property string sizeText
    required property nodeHandle node

    signal queued

    height: 48
    CommandRow.node: node
    label: `${name}, ${kindText}, ${sizeText}, ${place}`

    content: [
        ListRowName {
            y: 7
            width: kind.x - 14
            name: row.name
            place: row.place
        },
        Text {
            id: kind

            objectName: "kind"
            x: size.x - 8 - width
            width: 72
            height: parent.height
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            text: row.kindText
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11
            Accessible.ignored: true
        },
        Text {
            id: size

            objectName: "size"
            x: queue.x - 14 - width
            width: 84
            height: parent.height
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            text: row.sizeText
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 12
            font.weight: Font.Medium
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
