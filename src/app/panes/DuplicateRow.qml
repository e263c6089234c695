// A file that has copies, with its buttons. The first copy of a group has the group's heading above
// it, which warns while every copy is queued.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string groupText
    required property string digestText
    required property bool noneKept
    required property string name
    required property string place
    required property string sizeText
    required property bool sameBlocks
    required property nodeHandle node

    signal revealAsked
    signal queued

    height: headingHeight + 36
    headingHeight: groupText === "" ? 0 : index > 0 ? 44 : 30
    CommandRow.node: node
    label: `${place}, ${sizeText}${sameBlocks ? ", same blocks" : ""}`

    heading: Item {
        width: parent.width
        height: 30
        y: parent.height - height
        visible: row.groupText !== ""

        Rectangle {
            objectName: "groupRule"
            y: -5
            width: parent.width
            height: 1
            visible: row.index > 0
            color: Theme.hairline
        }

        Text {
            id: group

            objectName: "group"
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: row.groupText
            textFormat: Text.PlainText
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold

            Accessible.role: Accessible.Heading
            Accessible.name: row.noneKept ? `${text}, ${warning.text}` : text
        }

        RowBadge {
            id: warning

            objectName: "noneKept"
            x: group.width + 10
            y: Math.round((parent.height - height) / 2)
            visible: row.noneKept
            text: "No copy is kept"
            tint: Theme.warning
        }

        Text {
            objectName: "digest"
            x: parent.width - width
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: row.digestText
            textFormat: Text.PlainText
            color: Theme.muted
            font.family: Theme.monoFamily
            font.pixelSize: 10

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    content: [
        Text {
            objectName: "place"
            width: (row.sameBlocks ? shared.x : map.x) - 14
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: row.place
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 12
            Accessible.ignored: true
        },
        RowBadge {
            id: shared

            objectName: "sameBlocks"
            x: map.x - 14 - width
            y: Math.round((parent.height - height) / 2)
            visible: row.sameBlocks
            text: "same blocks"
        },
        RowPill {
            id: map

            objectName: "mapRow"
            x: reveal.x - 6 - width
            row: row
            text: "Map"
            onClicked: row.activated()

            Accessible.name: `Show ${row.place} on the map`
        },
        RowPill {
            id: reveal

            objectName: "revealRow"
            x: queue.x - 6 - width
            row: row
            text: "Reveal"
            onClicked: row.revealAsked()

            Accessible.name: `Reveal ${row.place}`
        },
        RowQueuePill {
            id: queue

            row: row
            name: row.place
            onClicked: row.queued()
        }
    ]
}
