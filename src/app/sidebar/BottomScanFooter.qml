// The bottom of the sidebar: the progress of the scan, or the button for another scan.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Item {
    id: footer

    required property SidebarState actions

    implicitHeight: 1 + 10 + rescan.implicitHeight + 10

    Rectangle {
        objectName: "footerRule"
        width: parent.width
        height: 1
        color: Theme.separator
    }

    MarrowSecondaryButton {
        id: rescan

        objectName: "rescanVolume"
        visible: !footer.actions.scanning
        x: 12
        y: 11
        width: parent.width - 24
        text: "Rescan Volume"
        symbol: "arrow.clockwise"
        onClicked: footer.actions.session.rescan()

        KeyboardGoesOn {
            control: rescan
        }
    }

    // As high as the button, so that the sections above do not move when a scan begins.
    Item {
        objectName: "scanProgress"
        visible: footer.actions.scanning
        x: 12
        y: 11
        width: parent.width - 24
        height: rescan.implicitHeight

        Accessible.role: Accessible.ProgressBar
        Accessible.name: "Scanning, " + percent.text

        ProgressRing {
            id: ring

            objectName: "footerRing"
            anchors.verticalCenter: parent.verticalCenter
            width: 14
            height: 14
            strokeWidth: 2
            value: footer.actions.session.run.scanPercent
            from: Theme.accent
            to: Theme.accent

            NumberAnimation on turn {
                running: footer.actions.scanning
                from: 0
                to: 1
                duration: 1400
                loops: Animation.Infinite
            }
        }

        Text {
            objectName: "footerText"
            anchors.verticalCenter: parent.verticalCenter
            anchors.left: ring.right
            anchors.leftMargin: 8
            text: "Scanning"
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 11
        }

        Text {
            id: percent

            objectName: "footerPercent"
            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            text: footer.actions.percentText
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 11
        }
    }
}
