// The map pane: one of four screens, as the scan goes.
import QtQuick
import Tessaly.Model
import Tessaly.Panes

Item {
    id: view

    required property ScanSession session
    required property NodeActions actions

    DiskMapState {
        id: mapState

        session: view.session
    }

    IdleScreen {
        objectName: "idleScreen"
        anchors.fill: parent
        visible: mapState.screen === DiskMapState.Idle
        session: view.session
    }

    ScanningScreen {
        objectName: "scanningScreen"
        anchors.fill: parent
        visible: mapState.screen === DiskMapState.Scanning
        session: view.session
        map: mapState
    }

    FailedScreen {
        objectName: "failedScreen"
        anchors.fill: parent
        visible: mapState.screen === DiskMapState.Failed
        session: view.session
        map: mapState
    }

    ResultScreen {
        objectName: "resultScreen"
        anchors.fill: parent
        visible: mapState.screen === DiskMapState.Result
        session: view.session
        actions: view.actions
        map: mapState
    }
}
