// A file that shares its blocks with others. The first file of a group has the group's heading above
// it. Nothing here removes the file.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string kindText
    required property string countText
    required property string savesText
    required property string sizesText
    required property string place
    required property nodeHandle node

    height: headingHeight + 24
    headingHeight: kindText === "" ? 0 : index > 0 ? 60 : 44
    CommandRow.node: node
    CommandRow.removable: false
    label: place

    heading: Item {
        width: parent.width
        height: 44
        y: parent.height - height
        visible: row.kindText !== ""

        Accessible.role: Accessible.Heading
        Accessible.name: `${row.kindText}, ${row.countText}, ${row.savesText}, ${row.sizesText}`

        Rectangle {
            objectName: "groupRule"
            y: -7
            width: parent.width
            height: 1
            visible: row.index > 0
            color: Theme.hairline
        }

        Text {
            id: kind

            objectName: "kind"
            y: 4
            text: row.kindText
            textFormat: Text.PlainText
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }

        Text {
            objectName: "count"
            x: kind.width + 8
            anchors.baseline: kind.baseline
            text: row.countText
            textFormat: Text.PlainText
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 12
            Accessible.ignored: true
        }

        Text {
            objectName: "saves"
            x: parent.width - width
            anchors.baseline: kind.baseline
            text: row.savesText
            textFormat: Text.PlainText
            color: Theme.success
            font.family: Theme.uiFamily
            font.pixelSize: 12
            font.weight: Font.Medium
            Accessible.ignored: true
        }

        Text {
            objectName: "sizes"
            y: 23
            width: parent.width
            text: row.sizesText
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 11
            Accessible.ignored: true
        }
    }

    content: Text {
        objectName: "place"
        width: parent.width
        height: parent.height
        verticalAlignment: Text.AlignVCenter
        text: row.place
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        color: Theme.muted
        font.family: Theme.monoFamily
        font.pixelSize: 11
        Accessible.ignored: true
    }
}
