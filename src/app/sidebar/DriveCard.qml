// The disk in use: its name, size and usage, and the menu of the other volumes.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

MarrowCard {
    id: card

    required property SidebarState actions

    radius: 12
    strokeOpacity: 0.06
    padding: 10

    contentItem: Column {
        spacing: 2

        DriveHeading {
            width: parent.width
            actions: card.actions
        }

        RadialStorageGauge {
            objectName: "gauge"
            width: parent.width
            usedPercent: card.actions.usedPercent
            // The linter does not know 64-bit integers.
            // qmllint disable
            usedBytes: card.actions.usedBytes
            totalBytes: card.actions.totalBytes
            freeBytes: card.actions.freeBytes
            // qmllint enable
        }
    }
}
