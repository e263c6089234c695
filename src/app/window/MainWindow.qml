// The main window: its bars, the pane in front, and what lies over them.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes
import Tessaly.Window

Window {
    id: window

    required property ScanSession session
    required property NodeActions actions

    // While one of these is up, no command acts on what lies under it.
    readonly property bool commandsAllowed: !alert.shown && !menu.shown

    objectName: "mainWindow"
    title: "Tessaly"
    width: 1280
    height: 820
    minimumWidth: 1100
    minimumHeight: 680

    WindowChrome {
        objectName: "chrome"
    }

    Rectangle {
        objectName: "ground"
        anchors.fill: parent
        color: Theme.bg
    }

    WindowMover {
        id: mover

        objectName: "mover"
        anchors.fill: parent
    }

    WindowState {
        id: barsState

        session: window.session
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TitleBar {
            objectName: "titleBar"
            Layout.fillWidth: true
            session: window.session
            bars: barsState

            WindowButtons {
                objectName: "windowButtons"
                x: 13
                anchors.verticalCenter: parent.verticalCenter
                onCloseAsked: window.close()
                onMinimiseAsked: window.showMinimized()
                onZoomAsked: mover.zoom()
            }
        }

        BreadcrumbBar {
            objectName: "breadcrumbs"
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            visible: barsState.showsBreadcrumbs
            session: window.session
        }

        DiskMapView {
            objectName: "diskMap"
            Layout.fillWidth: true
            Layout.fillHeight: true
            session: window.session
        }
    }

    Toast {
        anchors.fill: parent
        session: window.session
    }

    NodeMenu {
        id: menu

        objectName: "nodeMenu"
        anchors.fill: parent
        session: window.session
        actions: window.actions
    }

    ProtectedLocationAlert {
        id: alert

        objectName: "protectedLocation"
        anchors.fill: parent
        session: window.session
    }

    WindowEdges {
        objectName: "edges"
        anchors.fill: parent
    }

    // Looks into what has the focus on the map, and comes before the button that has the keyboard:
    // Return presses that.
    Shortcut {
        sequence: "Space"
        enabled: window.commandsAllowed && barsState.pane === WindowState.Map
            && barsState.hasFocusedNode
        onActivated: window.actions.quickLook(barsState.focusedNode)
    }

    Shortcut {
        sequence: "Ctrl+Backspace"
        enabled: window.commandsAllowed
        onActivated: window.session.trashFocused()
    }
}
