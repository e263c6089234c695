// The usage of a volume: a dial with the percentage in its middle, and the sizes below.
import QtQuick
import Tessaly.Controls

StorageGauge {
    id: gauge

    implicitWidth: Math.max(column.implicitWidth, 104)
    implicitHeight: column.implicitHeight

    Accessible.role: Accessible.Indicator
    Accessible.name: gauge.percentText + " full, " + gauge.usedText + ", " + gauge.freeText

    Column {
        id: column

        objectName: "column"
        anchors.horizontalCenter: parent.horizontalCenter
        topPadding: 8
        bottomPadding: 8
        spacing: 8

        GaugeDial {
            id: dial

            objectName: "dial"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 104
            height: 86
            usedPercent: gauge.usedPercent

            Column {
                anchors.horizontalCenter: parent.horizontalCenter
                y: Math.round(dial.centerY - height / 2)

                Text {
                    objectName: "percent"
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: gauge.percentText
                    color: Theme.ink
                    font.family: Theme.roundedFamily
                    font.pixelSize: 20
                    font.weight: Font.Bold
                }

                Text {
                    objectName: "full"
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: "FULL"
                    color: gauge.levelColor
                    font.family: Theme.uiFamily
                    font.pixelSize: 8
                    font.weight: Font.Bold
                    font.letterSpacing: 1
                }
            }
        }

        Text {
            objectName: "used"
            anchors.horizontalCenter: parent.horizontalCenter
            text: gauge.usedText
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 11
        }

        Text {
            objectName: "free"
            anchors.horizontalCenter: parent.horizontalCenter
            text: gauge.freeText
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 10
        }
    }
}
