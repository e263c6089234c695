// The window's area beside the sidebar: the current pane, and the search over it.
import QtQuick
import Tessaly.Model
import Tessaly.Overlays
import Tessaly.Panes
import Tessaly.Window

Item {
    id: area

    required property DiskMapState map
    required property ScanSession session
    required property NodeActions actions
    required property WindowState bars
    // A layer covers the whole window.
    required property bool covered

    // Tab goes from the bars into the search, past the items below it.
    Item {
        activeFocusOnTab: search.visible
        Accessible.ignored: true
        onActiveFocusChanged: {
            if (activeFocus)
                search.enterByTab()
        }
    }

    DiskMapView {
        objectName: "diskMap"
        anchors.fill: parent
        visible: area.bars.pane === WindowState.Map
        map: area.map
        session: area.session
        actions: area.actions
    }

    PlainFrame {
        objectName: "apps"
        anchors.fill: parent
        title: "Apps"
        shown: area.bars.pane === WindowState.Apps
        onClosed: area.bars.pane = WindowState.Map
    }

    PlainFrame {
        objectName: "pulse"
        anchors.fill: parent
        title: "Pulse"
        shown: area.bars.pane === WindowState.Monitor
        onClosed: area.bars.pane = WindowState.Map
    }

    PlainFrame {
        id: search

        objectName: "search"
        anchors.fill: parent
        title: "Search"
        isCard: true
        shown: area.session.shown.searchOpen
        covered: area.covered
        onClosed: area.session.shown.searchOpen = false
    }
}
