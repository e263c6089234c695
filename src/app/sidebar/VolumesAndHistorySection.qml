// The pinned and the recent folders; hidden without any.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions

    // Not their `visible`, which is false as long as this section is hidden.
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
