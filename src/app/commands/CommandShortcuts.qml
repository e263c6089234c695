// The keys of the commands, for the window that this stands in. A text field that has the keyboard
// keeps the keys that it edits with.
import QtQuick
import Tessaly.Commands

Instantiator {
    id: shortcuts

    required property MenuCommands commands
    // False while something lies over what the commands act on.
    required property bool allowed
    // What has the keyboard in that window.
    required property Item focusItem

    readonly property TextEditing editing: TextEditing {
        target: shortcuts.focusItem
    }

    model: commands.all

    // qmllint disable unqualified
    delegate: Shortcut {
        required property Command modelData

        sequence: modelData.shortcut
        enabled: shortcuts.allowed && modelData.enabled
            && !(shortcuts.editing.isField && modelData.editsText)
        autoRepeat: false
        onActivated: modelData.trigger()
    }
    // qmllint enable unqualified
}
