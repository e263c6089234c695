// The screen before the first scan: the program's name, and the two ways to start.
import QtQuick
import Tessaly.Controls
import Tessaly.Model

Item {
    id: screen

    required property ScanSession session

    Column {
        anchors.centerIn: parent
        width: Math.min(420, screen.width - 40)

        RoundedPanel {
            objectName: "emblem"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 88
            height: 88
            radius: 24
            color: Theme.accent
            endColor: Theme.indigo
            diagonal: true
            shadowColor: Qt.alpha(Theme.accent, 0.4)
            shadowRadius: 16
            shadowOffset: 6

            Symbol {
                objectName: "emblemSymbol"
                anchors.centerIn: parent
                name: "externaldrive.fill"
                size: 40
                color: Theme.ink
            }
        }

        Item {
            width: 1
            height: 22
        }

        Text {
            objectName: "title"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Tessaly"
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 28
            font.weight: Font.Bold
        }

        Item {
            width: 1
            height: 8
        }

        Text {
            objectName: "line"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: Wording.idleLine
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            lineHeight: 1.25
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 13
        }

        Item {
            width: 1
            height: 26
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            MarrowPrimaryButton {
                objectName: "idleScanHome"
                width: 200
                text: "Scan Home Folder"
                symbol: "house.fill"
                onClicked: screen.session.scanHome()
            }

            MarrowSecondaryButton {
                objectName: "idleChooseFolder"
                width: 180
                height: parent.height
                text: "Choose Folder…"
                symbol: "folder.fill"
                onClicked: screen.session.chooseFolder()
            }
        }
    }
}
