// A scrolling list that builds only the rows near the visible part. Wheel, finger and bar scroll
// it; dragging with the mouse does not.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

ListView {
    id: list

    // The view around the list, which scrolls when the list is at its end; null for none.
    property Flickable around: null
    property alias barName: bar.objectName

    // The user has scrolled by wheel or bar.
    signal scrolled

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    interactive: LastPress.byFinger
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    currentIndex: -1

    Accessible.role: Accessible.List

    WheelScroll {
        view: list
        around: list.around
        onTurned: list.scrolled()
    }

    T.ScrollBar.vertical: MarrowScrollBar {
        id: bar

        onPressedChanged: list.scrolled()
    }
}
