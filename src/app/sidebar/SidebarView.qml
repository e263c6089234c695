// The column at the window's left: the disk in use, where to scan and where to go, the folders that
// are kept at hand or left out, the filters, and what the colours stand for.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

Rectangle {
    id: sidebar

    required property ScanSession session
    required property AccessController access

    implicitWidth: 260
    color: Theme.bg2

    SidebarState {
        id: sidebarActions

        session: sidebar.session
        access: sidebar.access
    }

    MarrowScrollArea {
        id: scrollArea

        objectName: "scrollArea"
        anchors.top: parent.top
        anchors.bottom: footer.top
        width: parent.width
        padding: 12
        spacing: 14

        DriveCard {
            objectName: "driveCard"
            width: parent.width
            actions: sidebarActions
        }

        QuickActionsSection {
            objectName: "quickActionsSection"
            width: parent.width
            actions: sidebarActions
        }

        CleanupCategoriesSection {
            objectName: "cleanupCategoriesSection"
            width: parent.width
            actions: sidebarActions
        }

        VolumesAndHistorySection {
            objectName: "volumesAndHistorySection"
            width: parent.width
            actions: sidebarActions
        }

        ExcludedSection {
            objectName: "excludedSection"
            width: parent.width
            actions: sidebarActions
            area: scrollArea
        }

        DevBloatSection {
            objectName: "devBloatSection"
            width: parent.width
            actions: sidebarActions
        }

        FileTypeLegend {
            objectName: "fileTypeLegend"
            width: parent.width
        }
    }

    BottomScanFooter {
        id: footer

        objectName: "bottomScanFooter"
        anchors.bottom: parent.bottom
        width: parent.width
        actions: sidebarActions
    }
}
