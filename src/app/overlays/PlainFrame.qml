// A frame around its content, with a title and a close button. It fills its area, or is a modal
// card in the middle of it.
import QtQuick
import Tessaly.Controls
import Tessaly.Overlays

InputShield {
    id: frame

    required property string title
    property bool isCard: false
    default property alias body: bodyPlace.data

    // The user has closed the frame.
    signal closed

    isModal: isCard
    dimColor: Theme.dim
    onDismissed: frame.closed()

    Accessible.role: isCard ? Accessible.Dialog : Accessible.Pane
    Accessible.name: title

    PanelGround {
        objectName: "surface"
        x: frame.isCard ? Math.round((frame.width - width) / 2) : 0
        y: frame.isCard ? Math.round((frame.height - height) / 2) : 0
        width: frame.isCard ? Math.min(560, frame.width) : frame.width
        height: frame.isCard ? Math.min(420, frame.height) : frame.height
        isRaised: frame.isCard

        Text {
            objectName: "title"
            x: 18
            y: Math.round((48 - height) / 2)
            width: close.x - 2 * x
            text: frame.title
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 15
            font.weight: Font.Bold
        }

        Rectangle {
            objectName: "rule"
            x: frame.isCard ? 1 : 0
            y: 48
            width: parent.width - 2 * x
            height: 1
            color: Theme.hairline
        }

        Item {
            id: bodyPlace

            objectName: "body"
            y: 49
            width: parent.width
            height: parent.height - y
        }

        MarrowButton {
            id: close

            objectName: "close"
            x: parent.width - width - 12
            y: 10
            width: 28
            height: 28
            symbol: "xmark"
            symbolSize: 12
            symbolColor: hovered || pressed ? Theme.ink : Theme.muted
            opacity: pressed ? 0.75 : 1
            focusRadius: 7
            Accessible.name: "Close"
            onClicked: frame.closed()

            background: RoundedPanel {
                objectName: "background"
                radius: 7
                color: close.hovered ? Theme.hoverFill : "transparent"
            }
        }
    }
}
