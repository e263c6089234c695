// The header of the panel. A click anywhere on it collapses or expands the panel.
import QtQuick
import Tessaly.Controls
import Tessaly.Queue

MarrowButton {
    id: header

    required property CleanupQueueState queue

    leftPadding: 14
    rightPadding: 14
    opacity: pressed ? 0.75 : 1
    focusRadius: 12
    onClicked: queue.toggleMinimized()

    Accessible.name: queue.headerName

    // qmllint disable deferred-property-id
    contentItem: Item {
        Symbol {
            id: trash

            objectName: "trashSymbol"
            y: Math.round((parent.height - height) / 2)
            name: "trash"
            size: 13
            color: Theme.ink
        }

        Text {
            id: title

            objectName: "title"
            x: trash.width + 8
            y: Math.round((parent.height - height) / 2)
            text: "Cleanup Queue"
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }

        RoundedPanel {
            objectName: "badge"
            x: Math.ceil(title.x + title.width) + 8
            y: Math.round((parent.height - height) / 2)
            width: Math.max(Math.ceil(count.implicitWidth) + 14, height)
            height: Math.ceil(count.implicitHeight) + 4
            radius: height / 2
            color: Qt.alpha(Theme.error, 0.12)

            Text {
                id: count

                objectName: "count"
                x: Math.round((parent.width - width) / 2)
                y: 2
                text: header.queue.countText
                color: Theme.error
                font.family: Theme.uiFamily
                font.pixelSize: 11
                font.weight: Font.Bold
                Accessible.ignored: true
            }
        }

        Symbol {
            objectName: "chevron"
            x: parent.width - width
            y: Math.round((parent.height - height) / 2)
            name: header.queue.look === CleanupQueueState.Minimized ? "chevron.up" : "chevron.down"
            size: 11
            color: Theme.muted
        }
    }
    // qmllint enable deferred-property-id
}
