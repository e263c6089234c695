// The pinned folders and the recent ones. Without any it takes up no room.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions

    // Not by what is to be seen of them: nothing of them is, as long as this is hidden.
    visible: pinned.isFilled || recents.isFilled
    spacing: 14

    PathSection {
        id: pinned

        objectName: "pinned"
        width: parent.width
        actions: section.actions
        folders: section.actions.pins
        title: "Pinned"
        symbol: "star.fill"
        tint: Theme.warning
    }

    PathSection {
        id: recents

        objectName: "recents"
        width: parent.width
        actions: section.actions
        folders: section.actions.recents
        title: "Recents"
        symbol: "clock.arrow.circlepath"
        tint: Theme.muted
    }
}
