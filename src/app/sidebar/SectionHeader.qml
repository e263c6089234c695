// The heading of a section of the sidebar.
import QtQuick
import Tessaly.Controls

Row {
    id: header

    required property string title
    required property string symbol
    property color tint: Theme.muted

    spacing: 6
    bottomPadding: 4

    Accessible.role: Accessible.Heading
    Accessible.name: title

    Symbol {
        objectName: "headerSymbol"
        y: Math.round((label.height - height) / 2)
        name: header.symbol
        size: 10
        color: header.tint
    }

    Text {
        id: label

        objectName: "headerTitle"
        text: header.title
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 10
        font.weight: Font.DemiBold
        font.letterSpacing: 0.8
        font.capitalization: Font.AllUppercase
    }
}
