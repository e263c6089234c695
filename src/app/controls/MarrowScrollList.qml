// A list behind a window of its own, of which only the rows in sight exist. It scrolls by the wheel, by
// the finger and by its bar; the mouse does not pull it.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

ListView {
    id: list

    // What the list stands in, and what scrolls on where the list is at its end; null for nothing.
    property Flickable around: null
    property alias barName: bar.objectName

    // The user moves it by the wheel or by the bar.
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
