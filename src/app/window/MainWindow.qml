// The main window: its bars, the current pane, and the layers over them.
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
    required property ViewStates states
    required property WindowState bars
    required property NodeActions actions
    required property AccessGateActions gateActions
    required property MenuCommands commands

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

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TitleBar {
            id: titleBar

            objectName: "titleBar"
            Layout.fillWidth: true
            navigation: window.session.navigation
            screens: window.session.shown
            bars: window.bars
            onMenuAsked: window.openMenu(titleBar.menuButton.visualFocus)
        }

        BreadcrumbBar {
            id: breadcrumbs

            objectName: "breadcrumbs"
            Layout.fillWidth: true
            Layout.preferredHeight: 36
            visible: window.bars.showsBreadcrumbs
            crumbs: window.states.crumbs(breadcrumbs)
        }

        FailureLine {
            id: failureLine

            objectName: "failureLine"
            Layout.fillWidth: true
            failure: window.states.failure(failureLine)
            messages: window.session.messages
        }

        RowLayout {
            spacing: 0

            SidebarView {
                id: sidebar

                objectName: "sidebar"
                Layout.preferredWidth: 260
                Layout.fillHeight: true
                actions: window.states.sidebar(sidebar)
            }

            Rectangle {
                objectName: "sidebarRule"
                Layout.preferredWidth: 1
                Layout.fillHeight: true
                color: Theme.hairline
            }

            MainArea {
                id: mainArea

                objectName: "mainArea"
                Layout.fillWidth: true
                Layout.fillHeight: true
                map: window.states.map(mainArea)
                session: window.session
                actions: window.actions
                bars: window.bars
                covered: window.bars.covered || window.bars.menuOpen
            }
        }
    }

    CleanupQueueView {
        id: cleanupQueue

        objectName: "cleanupQueue"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 16
        queue: window.states.queue(cleanupQueue)
    }

    Toast {
        id: toast

        anchors.fill: parent
        message: window.states.toast(toast)
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
        shown: window.session.shown.aiOpen
        onClosed: window.session.shown.aiOpen = false
    }

    PlainFrame {
        objectName: "inbox"
        anchors.fill: parent
        title: "Screenshot Inbox"
        isCard: true
        shown: window.session.shown.ocrOpen
        onClosed: window.session.shown.ocrOpen = false
    }

    PlainFrame {
        objectName: "settings"
        anchors.fill: parent
        title: "Settings"
        isCard: true
        shown: window.bars.settingsOpen
        onClosed: window.bars.settingsOpen = false
    }

    NodeMenu {
        id: menu

        objectName: "nodeMenu"
        anchors.fill: parent
        question: window.states.question(menu)
        actions: window.actions
    }

    ProtectedLocationAlert {
        id: alert

        objectName: "protectedLocation"
        anchors.fill: parent
        warning: window.states.warning(alert)
        session: window.session
    }

    // The title bar moves the window even while the gate covers it.
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

    Shortcut {
        sequence: "Escape"
        enabled: window.bars.canPutAway
        onActivated: window.bars.putAway()
    }

    // The search can be opened from outside the window, too.
    Connections {
        target: window.session.shown

        function onSearchOpenChanged() {
            if (window.session.shown.searchOpen)
                commandMenu.close()
        }
    }

    // Previews the focused item of the map or the focused row of a list, even if a button has the
    // keyboard focus: Return presses that.
    Shortcut {
        sequence: "Space"
        enabled: window.bars.canPreview
        onActivated: window.actions.quickLook(window.bars.target)
    }

    CommandMenu {
        id: commandMenu

        objectName: "commandMenu"
        parent: titleBar.menuButton
        commands: window.commands
        allowed: window.bars.clear
        onVisibleChanged: window.bars.menuOpen = visible
        onSettingsAsked: window.bars.settingsOpen = true
        onCloseAsked: window.close()
    }

    CommandShortcuts {
        commands: window.commands
        allowed: window.bars.takesCommands
        focusItem: window.activeFocusItem
    }

    Shortcut {
        sequence: "F10"
        enabled: window.bars.takesCommands
        onActivated: window.openMenu(true)
    }

    Shortcut {
        sequence: "Ctrl+,"
        enabled: window.bars.takesCommands
        onActivated: window.bars.settingsOpen = true
    }

    // These two work whatever covers the map.
    Shortcut {
        sequence: "Ctrl+W"
        enabled: !window.bars.menuOpen
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        enabled: !window.bars.menuOpen
        onActivated: window.commands.quit()
    }
}
