// The progress of a scan without an older result.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

Item {
    id: screen

    required property ScanRun run
    required property DiskMapState map

    Column {
        anchors.centerIn: parent
        width: Math.min(480, screen.width - 40)

        ProgressRing {
            objectName: "ring"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 68
            height: 68
            strokeWidth: 6
            value: screen.run.scanPercent
            from: Theme.accent
            to: Theme.indigo

            Accessible.role: Accessible.ProgressBar
            Accessible.name: "Scan, " + screen.map.percentText

            NumberAnimation on turn {
                running: screen.visible
                from: 0
                to: 1
                duration: 1400
                loops: Animation.Infinite
            }
        }

        Item {
            width: 1
            height: 20
        }

        Text {
            objectName: "title"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Analyzing Disk Hierarchy…"
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 16
            font.weight: Font.DemiBold
        }

        Item {
            width: 1
            height: 8
        }

        Text {
            objectName: "progress"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: screen.map.scanningText
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.muted
            font.family: Theme.monoFamily
            font.pixelSize: 11
        }

        Item {
            width: 1
            height: 8
        }

        Text {
            objectName: "percent"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: screen.map.percentText
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.Bold
        }

        Item {
            width: 1
            height: 18
        }

        MarrowSecondaryButton {
            objectName: "cancel"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 120
            text: "Cancel"
            onClicked: screen.run.cancel()
        }
    }
}
