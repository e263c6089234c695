// A list of pinned or recent folders below its header; hidden while it is empty.
import QtQuick
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions
    required property PathListModel folders
    required property string title
    required property string symbol
    required property color tint

    readonly property bool isFilled: section.folders.count > 0

    visible: isFilled
    spacing: 3

    SectionHeader {
        objectName: "sectionHeader"
        title: section.title
        symbol: section.symbol
        tint: section.tint
    }

    Repeater {
        model: section.folders

        // qmllint disable unqualified
        PathRow {
            objectName: "pathRow"
            width: section.width
            actions: section.actions
            pinned: section.folders.list === PathListModel.Pins
        }
        // qmllint enable unqualified
    }
}
