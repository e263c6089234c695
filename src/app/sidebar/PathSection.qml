// A list of folders at hand under its header; without a folder it is not there.
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

        // The names of this file reach into the component, though the linter cannot know.
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
