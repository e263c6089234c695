// A row of a MarrowList. The list gives the keyboard to rows, and a row to its control.
import QtQuick
import QtQuick.Templates as T

FocusScope {
    id: row

    required property int index
    // Gets the keyboard first.
    property T.Control control: null

    readonly property bool hasKeyboard: activeFocus
    readonly property int focusReason: control !== null ? control.focusReason : Qt.OtherFocusReason
    // Tab comes to what stands in it.
    readonly property bool isTabStop: ListView.isCurrentItem || hasKeyboard

    function takeKeyboard(reason) {
        control.forceActiveFocus(reason)
        // It may have it already, and show so only by the reason.
        control.focusReason = reason
    }

    onHasKeyboardChanged: {
        if (hasKeyboard && ListView.view !== null)
            ListView.view.currentIndex = index
    }
}
