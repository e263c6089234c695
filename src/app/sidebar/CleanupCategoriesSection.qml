// The entries that show the panes of the window, and the one that empties the Trash.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions

    spacing: 1

    SectionHeader {
        objectName: "viewsHeader"
        title: "Views & Tools"
        symbol: "square.grid.2x2"
    }

    SidebarNavItem {
        objectName: "diskTreemap"
        width: parent.width
        text: "Disk Treemap"
        symbol: "square.split.2x2"
        badge: section.actions.mapBadge
        active: section.actions.showsMap
        onClicked: section.actions.showMap()

        Accessible.selectable: true
        Accessible.selected: active
    }

    SidebarNavItem {
        objectName: "systemPulse"
        width: parent.width
        text: "System Pulse"
        symbol: "waveform.path.ecg"
        badge: "Live"
        badgeColor: Theme.success
        active: section.actions.showsMonitor
        onClicked: section.actions.showMonitor()

        Accessible.selectable: true
        Accessible.selected: active
    }

    SidebarNavItem {
        objectName: "appLeftovers"
        width: parent.width
        text: "App Leftovers"
        symbol: "app.badge.checkmark"
        active: section.actions.showsApps
        onClicked: section.actions.showApps()

        Accessible.selectable: true
        Accessible.selected: active
    }

    SidebarNavItem {
        objectName: "emptyTrash"
        enabled: !section.actions.session.removal.moving
        width: parent.width
        text: "Trash"
        symbol: "trash"
        badge: section.actions.trashBadge
        badgeColor: Theme.warning
        onClicked: section.actions.emptyTrash()
    }
}
