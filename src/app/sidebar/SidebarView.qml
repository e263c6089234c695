// The sidebar: the disk in use, the actions and panes, the pinned, recent and excluded folders, the
// filters, and the legend of the colours.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Rectangle {
    id: sidebar

    required property SidebarState actions

    implicitWidth: 260
    color: Theme.bg2

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
            actions: sidebar.actions
        }

        QuickActionsSection {
            objectName: "quickActionsSection"
            width: parent.width
            actions: sidebar.actions
        }

        CleanupCategoriesSection {
            objectName: "cleanupCategoriesSection"
            width: parent.width
            actions: sidebar.actions
        }

        VolumesAndHistorySection {
            objectName: "volumesAndHistorySection"
            width: parent.width
            actions: sidebar.actions
        }

        ExcludedSection {
            objectName: "excludedSection"
            width: parent.width
            actions: sidebar.actions
            area: scrollArea
        }

        DevBloatSection {
            objectName: "devBloatSection"
            width: parent.width
            actions: sidebar.actions
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
        actions: sidebar.actions
    }
}
