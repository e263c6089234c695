// The main window: its bars, the pane in front, and what lies over them.
import QtQuick
import QtQuick.Layouts
import Tessaly.Commands
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Overlays
import Tessaly.Queue
import Tessaly.Sidebar
import Tessaly.Window

Window {
    id: window

    required property ScanSession session
    required property NodeActions actions
    required property AccessGateActions gateActions
    required property MenuCommands commands

    // Something lies over the whole window, the search included.
    readonly property bool isCovered: alert.shown || menu.shown || gate.shown || session.aiOpen
        || session.ocrOpen || barsState.settingsOpen
    // While one of these is up, no command acts on what lies under it.
    readonly property bool isClear: !isCovered && !session.searchOpen
    readonly property bool commandsAllowed: isClear && !commandMenu.visible

    function openMenu(byKeyboard: bool) {
        const button = titleBar.menuButton
        commandMenu.openAt(button.width - commandMenu.width, button.height + 4, byKeyboard)
    }

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
        titleHeight: titleBar.height
    }

    WindowState {
        id: barsState

        session: window.session
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TitleBar {
            id: titleBar

            objectName: "titleBar"
            Layout.fillWidth: true
            session: window.session
            bars: barsState
            onMenuAsked: window.openMenu(titleBar.menuButton.visualFocus)
        }

        BreadcrumbBar {
            objectName: "breadcrumbs"
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            visible: barsState.showsBreadcrumbs
            session: window.session
        }

        FailureLine {
            objectName: "failureLine"
            Layout.fillWidth: true
            session: window.session
        }

        RowLayout {
            spacing: 0

            SidebarView {
                objectName: "sidebar"
                Layout.preferredWidth: 260
                Layout.fillHeight: true
                session: window.session
                access: window.gateActions.access
            }

            Rectangle {
                objectName: "sidebarRule"
                Layout.preferredWidth: 1
                Layout.fillHeight: true
                color: Qt.rgba(1, 1, 1, 0.06)
            }

            MainArea {
                objectName: "mainArea"
                Layout.fillWidth: true
                Layout.fillHeight: true
                session: window.session
                actions: window.actions
                bars: barsState
                covered: window.isCovered || commandMenu.visible
            }
        }
    }

    CleanupQueueView {
        objectName: "cleanupQueue"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 16
        session: window.session
    }

    Toast {
        anchors.fill: parent
        session: window.session
    }

    AccessGateView {
        id: gate

        objectName: "gate"
        anchors.fill: parent
        actions: window.gateActions
    }

    PlainFrame {
        objectName: "assistant"
        anchors.fill: parent
        title: "AI Hub"
        isCard: true
        shown: window.session.aiOpen
        onClosed: window.session.aiOpen = false
    }

    PlainFrame {
        objectName: "inbox"
        anchors.fill: parent
        title: "Screenshot Inbox"
        isCard: true
        shown: window.session.ocrOpen
        onClosed: window.session.ocrOpen = false
    }

    PlainFrame {
        objectName: "settings"
        anchors.fill: parent
        title: "Settings"
        isCard: true
        shown: barsState.settingsOpen
        onClosed: barsState.settingsOpen = false
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

    // The window itself can be had hold of whatever stands before its content.
    WindowMover {
        objectName: "gateMover"
        width: parent.width
        height: titleBar.height
        titleHeight: height
        visible: gate.shown
    }

    WindowButtons {
        objectName: "windowButtons"
        x: 13
        y: Math.round((titleBar.height - height) / 2)
        onCloseAsked: window.close()
        onMinimiseAsked: window.showMinimized()
        onZoomAsked: mover.zoom()
    }

    WindowEdges {
        objectName: "edges"
        anchors.fill: parent
    }

    // Puts away what lies over the map, one after the other; cards and questions do so themselves.
    Shortcut {
        sequence: "Escape"
        enabled: window.commandsAllowed
            && (barsState.queueUnfolded || barsState.pane !== WindowState.Map
                || !barsState.showsTreemap)
        onActivated: {
            if (barsState.queueUnfolded)
                barsState.putQueueAway()
            else if (barsState.pane !== WindowState.Map)
                barsState.pane = WindowState.Map
            else
                barsState.showTreemap()
        }
    }

    // The search leaves the bars to the pointer, and the keyboard goes along with that.
    Shortcut {
        sequence: "Escape"
        enabled: window.session.searchOpen && !window.isCovered && !commandMenu.visible
        onActivated: window.session.searchOpen = false
    }

    // The search may be asked for from anywhere in the desktop.
    Connections {
        target: window.session

        function onSearchOpenChanged() {
            if (window.session.searchOpen)
                commandMenu.close()
        }
    }

    // Looks into what has the focus on the map, and comes before the button that has the keyboard:
    // Return presses that.
    Shortcut {
        sequence: "Space"
        enabled: window.commandsAllowed && barsState.pane === WindowState.Map
            && barsState.hasFocusedNode
        onActivated: window.actions.quickLook(barsState.focusedNode)
    }

    CommandMenu {
        id: commandMenu

        objectName: "commandMenu"
        parent: titleBar.menuButton
        commands: window.commands
        allowed: window.isClear
        onSettingsAsked: barsState.settingsOpen = true
        onCloseAsked: window.close()
    }

    CommandShortcuts {
        commands: window.commands
        allowed: window.commandsAllowed
        focusItem: window.activeFocusItem
    }

    Shortcut {
        sequence: "F10"
        enabled: window.commandsAllowed
        onActivated: window.openMenu(true)
    }

    Shortcut {
        sequence: "Ctrl+,"
        enabled: window.commandsAllowed
        onActivated: barsState.settingsOpen = true
    }

    // The window and the program end whatever lies over the map.
    Shortcut {
        sequence: "Ctrl+W"
        enabled: !commandMenu.visible
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        enabled: !commandMenu.visible
        onActivated: window.commands.quit()
    }
}
