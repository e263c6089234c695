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
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Idle
        sourceComponent: IdleScreen {
            objectName: "idleScreen"
            session: view.session
        }
    }

    Loader {
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Scanning
        sourceComponent: ScanningScreen {
            objectName: "scanningScreen"
            session: view.session
            map: mapState
        }
    }

    Loader {
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Failed
        sourceComponent: FailedScreen {
            objectName: "failedScreen"
            session: view.session
            map: mapState
        }
    }

    Loader {
        anchors.fill: parent
        active: mapState.screen === DiskMapState.Result
        sourceComponent: ResultScreen {
            objectName: "resultScreen"
            session: view.session
            map: mapState
        }
    }
}
