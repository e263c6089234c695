// The main window: its bars, and the pane in front.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes
import Tessaly.Window

Window {
    id: window

    required property ScanSession session

    objectName: "mainWindow"
    title: "Tessaly"
    width: 1280
    height: 820
    minimumWidth: 1100
    minimumHeight: 680
    color: Theme.bg

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

    ProtectedLocationAlert {
        id: alert

        objectName: "protectedLocation"
        anchors.fill: parent
        session: window.session
    }

    // What lies under an alert takes no commands.
    Shortcut {
        sequence: "Ctrl+Backspace"
        enabled: !alert.shown
        onActivated: window.session.trashFocused()
    }
}
