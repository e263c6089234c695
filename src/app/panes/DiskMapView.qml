// The map pane: one of four screens, as the scan goes.
import QtQuick
import Tessaly.Model
import Tessaly.Panes

Item {
    id: view

    required property ScanSession session

    DiskMapState {
        id: mapState

        session: view.session
    }

    Loader {
        objectName: "idleScreen"
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Idle
        sourceComponent: IdleScreen {
            session: view.session
        }
    }

    Loader {
        objectName: "scanningScreen"
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Scanning
        sourceComponent: ScanningScreen {
            session: view.session
            map: mapState
        }
    }

    Loader {
        objectName: "failedScreen"
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Failed
        sourceComponent: FailedScreen {
            session: view.session
            map: mapState
        }
    }

    Loader {
        objectName: "resultScreen"
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Result
        sourceComponent: ResultScreen {
            session: view.session
            map: mapState
        }
    }
}
