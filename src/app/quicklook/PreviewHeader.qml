// The kind, name and size of the previewed item, and the button that opens it in its own
// application.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.QuickLook

Rectangle {
    id: header

    required property PreviewState preview

    implicitHeight: 53
    color: Theme.bg2

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 14
        spacing: 10

        Symbol {
            objectName: "symbol"
            Layout.preferredWidth: 20
            Layout.preferredHeight: 20
            name: header.preview.symbol
            size: 16
            color: Theme.muted
        }

        Text {
            objectName: "name"
            Layout.fillWidth: true
            text: header.preview.name
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold
        }

        Text {
            objectName: "size"
            visible: text !== ""
            text: header.preview.size
            textFormat: Text.PlainText
            color: Theme.muted
            font.family: Theme.monoFamily
            font.pixelSize: 11
        }

        MarrowSecondaryButton {
            objectName: "open"
            visible: header.preview.canOpen
            text: "Open"
            onClicked: header.preview.open()
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.hairline
    }
}
