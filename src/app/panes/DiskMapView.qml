// The map pane: shows one of four screens, depending on the scan.
import QtQuick
import Tessaly.Model
import Tessaly.Panes

Item {
    id: view

    required property DiskMapState map
    required property ScanSession session
    required property NodeActions actions

    IdleScreen {
        objectName: "idleScreen"
        anchors.fill: parent
        visible: view.map.screen === DiskMapState.Idle
        session: view.session
    }

    ScanningScreen {
        objectName: "scanningScreen"
        anchors.fill: parent
        visible: view.map.screen === DiskMapState.Scanning
        run: view.session.run
        map: view.map
    }

    FailedScreen {
        objectName: "failedScreen"
        anchors.fill: parent
        visible: view.map.screen === DiskMapState.Failed
        session: view.session
        map: view.map
    }

    ResultScreen {
        objectName: "resultScreen"
        anchors.fill: parent
        visible: view.map.screen === DiskMapState.Result
        session: view.session
        actions: view.actions
        map: view.map
    }
}
