// The buttons that start a scan and cancel it.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions

    spacing: 1

    SectionHeader {
        objectName: "quickActionsHeader"
        title: "Quick Actions"
        symbol: "bolt.fill"
        tint: Theme.accent
    }

    SidebarNavItem {
        objectName: "scanFullMac"
        width: parent.width
        text: Wording.scanWholeDisk
        symbol: "externaldrive.badge.timemachine"
        enabled: !section.actions.scanning
        onClicked: section.actions.scanFullMac()
    }

    SidebarNavItem {
        objectName: "scanHome"
        width: parent.width
        text: "Scan Home"
        symbol: "house.fill"
        enabled: !section.actions.scanning
        onClicked: section.actions.session.scanHome()
    }

    SidebarNavItem {
        objectName: "chooseFolder"
        width: parent.width
        text: "Choose…"
        symbol: "folder.fill"
        enabled: !section.actions.scanning
        onClicked: section.actions.session.chooseFolder()
    }

    SidebarNavItem {
        objectName: "cancelScan"
        width: parent.width
        visible: section.actions.scanning
        text: "Cancel Scan"
        symbol: "xmark.circle.fill"
        symbolColor: Theme.error
        labelColor: Theme.error
        onClicked: section.actions.session.run.cancel()
    }
}
