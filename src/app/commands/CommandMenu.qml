// The menu of the main window: commands for text, then those for the tree, then those for the
// program.
import QtQuick
import Tessaly.Commands
import Tessaly.Controls

MarrowMenu {
    id: menu

    required property MenuCommands commands
    // False while an overlay covers what the commands act on.
    required property bool allowed

    signal settingsAsked
    signal closeAsked

    name: "Menu"
    minimumWidth: 264
    onAboutToShow: editing.target = previousFocus

    TextEditing {
        id: editing
    }

    MarrowMenuItem {
        objectName: "menuCut"
        text: "Cut"
        shortcut: "Ctrl+X"
        enabled: editing.canCut
        onTriggered: editing.cut()
    }

    MarrowMenuItem {
        objectName: "menuCopy"
        text: "Copy"
        shortcut: "Ctrl+C"
        enabled: editing.canCopy
        onTriggered: editing.copy()
    }

    MarrowMenuItem {
        objectName: "menuPaste"
        text: "Paste"
        shortcut: "Ctrl+V"
        enabled: editing.canPaste
        onTriggered: editing.paste()
    }

    MarrowMenuItem {
        objectName: "menuSelectAll"
        text: "Select All"
        shortcut: "Ctrl+A"
        enabled: editing.canSelectAll
        onTriggered: editing.selectAll()
    }

    MarrowMenuSeparator {}

    Repeater {
        model: menu.commands.all

        // qmllint disable unqualified
        delegate: MarrowMenuItem {
            required property Command modelData

            objectName: "menuCommand"
            text: modelData.title
            shortcut: modelData.keys
            enabled: menu.allowed && modelData.enabled
            onTriggered: modelData.trigger()
        }
        // qmllint enable unqualified
    }

    MarrowMenuSeparator {}

    MarrowMenuItem {
        objectName: "menuSettings"
        text: "Settings…"
        shortcut: "Ctrl+,"
        enabled: menu.allowed
        onTriggered: menu.settingsAsked()
    }

    MarrowMenuItem {
        objectName: "menuClose"
        text: "Close"
        shortcut: "Ctrl+W"
        onTriggered: menu.closeAsked()
    }

    MarrowMenuItem {
        objectName: "menuQuit"
        text: "Quit"
        shortcut: "Ctrl+Q"
        onTriggered: menu.commands.quit()
    }
}
