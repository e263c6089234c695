// A large symbol, a line below it, and the facts about the file: for sound, film, files without a
// picture, and files that cannot be shown.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

ScrollList {
    id: view

    readonly property bool failed: preview.body === PreviewScreen.Failure

    visible: preview.body === PreviewScreen.Facts || preview.body === PreviewScreen.Media || failed
    focus: visible
    model: preview.rows

    Accessible.name: preview.description

    // qmllint disable unqualified
    header: Column {
        width: ListView.view.width
        topPadding: 36
        bottomPadding: 22
        spacing: 16

        Symbol {
            objectName: "headlineSymbol"
            anchors.horizontalCenter: parent.horizontalCenter
            name: view.preview.headlineSymbol
            size: view.failed ? 40 : 64
            color: view.failed ? Theme.warning : Theme.accent
        }

        Text {
            objectName: "headline"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(440, parent.width - 48)
            horizontalAlignment: Text.AlignHCenter
            text: view.preview.headline
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 4
            elide: Text.ElideRight
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 15
            font.weight: Font.DemiBold
        }
    }
    // qmllint enable unqualified

    delegate: Item {
        id: row

        required property string name
        required property string value
        readonly property real split: Math.round(width * 0.32)

        objectName: "fact"
        width: ListView.view.width
        height: Math.ceil(Math.max(nameText.height, valueText.height)) + 8

        Accessible.role: Accessible.ListItem
        Accessible.name: name + ": " + value

        Text {
            id: nameText

            objectName: "factName"
            x: 20
            width: row.split - 28
            horizontalAlignment: Text.AlignRight
            text: row.name
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 12
        }

        Text {
            id: valueText

            objectName: "factValue"
            x: row.split + 8
            width: row.width - x - 24
            text: row.value
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 4
            elide: Text.ElideRight
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 12
        }
    }

    footer: Item {
        height: 24
    }
}
