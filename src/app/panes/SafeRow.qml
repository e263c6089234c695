// A large unused file with its score, and the button that adds it to the cleanup queue.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string name
    required property string place
    required property string scoreText
    required property bool caution
    required property string verdict
    required property string sizeText
    required property nodeHandle node

    signal queued

    height: 64
    CommandRow.node: row.node
    label: `${name}, score ${scoreText}, ${verdict}, ${sizeText}, ${place}`

    content: [
        Text {
            id: score

            objectName: "score"
            width: 32
            height: parent.height
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            text: row.scoreText
            color: row.caution ? Theme.warning : Theme.success
            font.family: Theme.uiFamily
            font.pixelSize: 15
            font.weight: Font.Bold
            Accessible.ignored: true
        },
        ListRowName {
            x: score.width + 14
            y: 6
            width: size.x - 14 - x
            name: row.name
            detail: row.verdict
            place: row.place
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
