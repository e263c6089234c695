// The screen of a failed scan: its error, and the actions that the user can take.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

Item {
    id: screen

    required property ScanSession session
    required property DiskMapState map

    Column {
        anchors.centerIn: parent
        width: Math.min(420, screen.width - 40)

        Symbol {
            objectName: "warning"
            anchors.horizontalCenter: parent.horizontalCenter
            name: "exclamationmark.triangle.fill"
            size: 36
            color: Theme.error
        }

        Item {
            width: 1
            height: 14
        }

        Text {
            objectName: "title"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Scan Failed"
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 18
            font.weight: Font.Bold
        }

        Item {
            width: 1
            height: 8
        }

        Text {
            objectName: "message"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: screen.map.errorText
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 8
            elide: Text.ElideRight
            color: Theme.error
            opacity: 0.9
            font.family: Theme.monoFamily
            font.pixelSize: 12
        }

        Item {
            width: 1
            height: 20
        }

        MarrowPrimaryButton {
            objectName: "tryAgain"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 140
            text: "Try Again"
            onClicked: screen.session.scanHome()
        }
    }
}
