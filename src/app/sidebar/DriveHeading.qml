// The name and size of the disk in use, and the menu of the other volumes.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Item {
    id: heading

    required property SidebarState actions

    implicitHeight: 30

    RoundedPanel {
        id: emblem

        objectName: "emblem"
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        height: 28
        radius: 8
        color: Qt.alpha(Theme.accent, 0.18)

        Symbol {
            objectName: "emblemSymbol"
            anchors.fill: parent
            name: "externaldrive.fill"
            size: 13
            color: Theme.accent
        }
    }

    Column {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: emblem.right
        anchors.leftMargin: 10
        anchors.right: menu.visible ? menu.left : parent.right
        anchors.rightMargin: menu.visible ? 8 : 0

        Text {
            objectName: "volumeName"
            width: parent.width
            text: heading.actions.volumeName
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold
        }

        Text {
            objectName: "volumeTotal"
            width: parent.width
            text: heading.actions.totalText
            elide: Text.ElideRight
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 10
        }
    }

    VolumeMenu {
        id: menu

        objectName: "volumeMenu"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        actions: heading.actions
    }
}
