// What can be won back in all, and the actions for what is ticked.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

Item {
    id: header

    required property ListWinsState wins

    implicitHeight: 72

    RoundedPanel {
        id: badge

        objectName: "winsBadge"
        x: 18
        y: 16
        width: 40
        height: 40
        radius: 10
        color: Qt.alpha(Theme.success, 0.15)

        Symbol {
            anchors.centerIn: parent
            name: "sparkles"
            size: 18
            color: Theme.success
        }
    }

    Text {
        id: title

        objectName: "winsTitle"
        x: badge.x + badge.width + 12
        y: 15
        width: actions.x - 14 - x
        text: header.wins.titleText
        elide: Text.ElideRight
        color: Theme.ink
        font.family: Theme.uiFamily
        font.pixelSize: 17
        font.weight: Font.DemiBold

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        objectName: "winsPromise"
        x: title.x
        y: title.y + title.height + 4
        width: title.width
        text: "Select items and move them to Trash. Nothing is deleted automatically."
        elide: Text.ElideRight
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
    }

    Row {
        id: actions

        x: header.width - 18 - width
        height: header.height
        spacing: 8

        MarrowPill {
            id: pick

            objectName: "winsPick"
            anchors.verticalCenter: parent.verticalCenter
            visible: !header.wins.moving
            text: header.wins.pickText
            active: false
            onClicked: header.wins.toggleAll()

            Accessible.checkable: false

            KeyboardGoesOn {
                control: pick
            }
        }

        MarrowPill {
            id: stop

            objectName: "winsStop"
            anchors.verticalCenter: parent.verticalCenter
            visible: header.wins.moving
            enabled: !header.wins.stopping
            opacity: !enabled ? 0.45 : pressed ? 0.8 : 1
            text: header.wins.stopping ? "Stopping…" : "Stop"
            active: false
            onClicked: header.wins.stop()

            Accessible.checkable: false

            KeyboardGoesOn {
                control: stop
            }
        }

        MarrowPrimaryButton {
            id: move

            objectName: "winsMove"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(260, implicitWidth)
            visible: header.wins.hasPicked || header.wins.moving
            enabled: !header.wins.moving
            text: header.wins.moveText
            onClicked: header.wins.trashSelected()

            KeyboardGoesOn {
                control: move
            }
        }

        MarrowPill {
            objectName: "winsRefresh"
            anchors.verticalCenter: parent.verticalCenter
            symbol: "arrow.clockwise"
            text: "Refresh"
            active: false
            onClicked: header.wins.load()

            Accessible.checkable: false
        }
    }
}
