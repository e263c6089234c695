// A list to be read from top to bottom by wheel, finger, keys and bar. Nothing in it can be chosen, and
// the mouse does not pull it.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls
import Tessaly.QuickLook

ListView {
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

    activeFocusOnTab: true
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    interactive: LastPress.byFinger
    keyNavigationEnabled: false
    currentIndex: -1
    Keys.forwardTo: [keys]

    Accessible.role: Accessible.List
    Accessible.focusable: true

    ScrollKeys {
        id: keys

        target: list
        onUsed: list.untouched = false
    }

    WheelScroll {
        view: list
        onTurned: list.untouched = false
    }

    Connections {
        target: list.preview

        function onChanged() {
            list.untouched = true
            list.stayAtTheBeginning()
        }
    }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar

        objectName: "scrollBar"
        policy: list.contentHeight > list.height ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
        visible: policy === T.ScrollBar.AlwaysOn
        minimumSize: 0.05
        implicitWidth: 12
        padding: 3
        onPressedChanged: list.untouched = false

        contentItem: Rectangle {
            implicitWidth: 6
            radius: 3
            color: Qt.alpha(Theme.ink, bar.pressed ? 0.45 : bar.hovered ? 0.35 : 0.2)
        }
    }
}
