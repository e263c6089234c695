// An item that has grown: its growth and its current size.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string name
    required property string place
    required property string growthText
    required property string sizeText
    required property pathHandle path
    required property nodeHandle node

    height: 48
    CommandRow.node: node
    label: `${name}, ${growthText}, now ${sizeText}, ${place}`

    content: [
        ListRowName {
            y: 7
            width: growth.x - 14
            name: row.name
            place: row.place
        },
        Text {
            id: growth

            objectName: "growth"
            x: parent.width - width
            y: 7
            width: 72
            horizontalAlignment: Text.AlignRight
            text: row.growthText
            color: Theme.warning
            font.family: Theme.uiFamily
            font.pixelSize: 12
            font.weight: Font.Medium
            Accessible.ignored: true
        },
        Text {
            objectName: "size"
            x: parent.width - width
            y: 26
            width: 72
            horizontalAlignment: Text.AlignRight
            text: row.sizeText
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11
            Accessible.ignored: true
        }
    ]
}
