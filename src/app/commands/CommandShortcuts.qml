// The keys of the commands in a window. A text field with the keyboard focus keeps its editing
// keys.
import QtQuick
import Tessaly.Commands

Instantiator {
    id: shortcuts

    required property MenuCommands commands
    // False while an overlay covers what the commands act on.
    required property bool allowed
    // The item with the keyboard focus in that window.
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
