// A row of a MarrowList. The list gives the focus to the row, and the row to its control.
import QtQuick
import QtQuick.Templates as T

FocusScope {
    id: row

    required property int index
    // The control that gets the focus first.
    property T.Control control: null

    readonly property bool hasKeyboard: activeFocus
    readonly property int focusReason: control !== null ? control.focusReason : Qt.OtherFocusReason
    // Whether Tab visits the controls in the row.
    readonly property bool isTabStop: ListView.isCurrentItem || hasKeyboard

    function takeKeyboard(reason) {
        control.forceActiveFocus(reason)
        // If the control has the focus already, only the reason makes its focus ring visible.
        control.focusReason = reason
    }

    // The row after a removed one gets the focus from the ListView before it gets its new index.
    onHasKeyboardChanged: {
        if (hasKeyboard && ListView.view !== null && ListView.view.currentItem !== row)
            ListView.view.currentIndex = index
    }
}
