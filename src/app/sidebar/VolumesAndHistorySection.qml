// The pinned folders and the recent ones. Without any it takes up no room.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions

    visible: pinned.visible || recents.visible
    spacing: 14

    PathSection {
        id: pinned

        objectName: "pinned"
        width: parent.width
        actions: section.actions
        list: PathListModel.Pins
        title: "Pinned"
        symbol: "star.fill"
        tint: Theme.warning
    }

    PathSection {
        id: recents

        objectName: "recents"
        width: parent.width
        actions: section.actions
        list: PathListModel.Recents
        title: "Recents"
        symbol: "clock.arrow.circlepath"
        tint: Theme.muted
    }
}
