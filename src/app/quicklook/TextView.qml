// A text in a monospaced font, as far as it was read.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

ScrollList {
    id: view

    visible: preview.body === PreviewScreen.Text
    focus: visible
    model: preview.lines

    Accessible.name: preview.description

    header: Item {
        height: 14
    }
    footer: Item {
        height: 14
    }

    // Whole points, since the list estimates invisible rows by whole points.
    delegate: Item {
        id: row

        required property string line

        width: ListView.view.width
        height: Math.ceil(lineText.implicitHeight)

        Accessible.role: Accessible.StaticText
        Accessible.name: line

        Text {
            id: lineText

            objectName: "line"
            x: 18
            width: row.width - 36
            text: row.line
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.secondary
            font.family: Theme.monoFamily
            font.pixelSize: 12
            lineHeight: 1.2

            Accessible.ignored: true
        }
    }
}
