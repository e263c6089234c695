// An item that is in the cloud and not on this disk. Nothing here removes it.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string name
    required property string place
    required property string sizeText
    required property nodeHandle node

    height: 48
    CommandRow.node: node
    CommandRow.removable: false
    label: `${name}, ${sizeText}, ${place}`

    content: [
        ListRowName {
            y: 7
            width: size.x - 14
            name: row.name
            place: row.place
        },
        Text {
            id: size

            objectName: "size"
            x: parent.width - width
            width: 84
            height: parent.height
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            text: row.sizeText
            color: Theme.ink
            font.family: Theme.monoFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
    ]
}
