// A list to be read from top to bottom by wheel, finger, keys and bar. Nothing in it can be chosen.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

MarrowScrollList {
    id: list

    required property PreviewState preview
    // The user has not moved anything yet. Rows that turn out larger than guessed then push nothing
    // out of sight at the top.
    property bool untouched: true

    function stayAtTheBeginning() {
        if (untouched)
            contentY = originY
    }

    onOriginYChanged: stayAtTheBeginning()
    onContentHeightChanged: stayAtTheBeginning()
    onHeightChanged: stayAtTheBeginning()
    onMovementStarted: untouched = false
    onScrolled: untouched = false

    activeFocusOnTab: true
    Keys.forwardTo: [keys]

    Accessible.focusable: true

    ScrollKeys {
        id: keys

        target: list
        onUsed: list.untouched = false
    }

    Connections {
        target: list.preview

        function onChanged() {
            list.untouched = true
            list.stayAtTheBeginning()
        }
    }
}
