// The progress of a scan over the result of an older one.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

RoundedPanel {
    id: banner

    required property ScanRun run
    required property DiskMapState map

    width: 480
    height: 44
    radius: 10
    color: Qt.alpha(Theme.bg2, 0.96)
    outlineColor: Theme.floatOutline
    outlineWidth: 1
    shadowColor: Theme.floatShadow
    shadowRadius: 12
    shadowOffset: 4

    // Clicks do not pass through the banner.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 8
        spacing: 10

        ProgressRing {
            objectName: "ring"
            Layout.preferredWidth: 18
            Layout.preferredHeight: 18
            strokeWidth: 2.5
            value: banner.run.scanPercent
            from: Theme.accent
            to: Theme.indigo

            Accessible.role: Accessible.ProgressBar
            Accessible.name: "Scan, " + banner.map.percentText

            NumberAnimation on turn {
                running: banner.visible
                from: 0
                to: 1
                duration: 1400
                loops: Animation.Infinite
            }
        }

        Text {
            objectName: "progress"
            Layout.fillWidth: true
            text: banner.map.bannerText
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.secondary
            font.family: Theme.monoFamily
            font.pixelSize: 11
        }

        Text {
            objectName: "percent"
            Layout.minimumWidth: 34
            horizontalAlignment: Text.AlignRight
            text: banner.map.percentText
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 11
            font.weight: Font.Bold
        }

        MarrowSecondaryButton {
            objectName: "cancel"
            text: "Cancel"
            onClicked: banner.run.cancel()
        }
    }
}
