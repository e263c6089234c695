// A short message at the bottom of the window. It slides in from the edge and out again. Clicks
// pass through it.
import QtQuick
import Tessaly.Controls
import Tessaly.Window

Item {
    id: place

    required property ToastState message

    enabled: false
    visible: place.message.shown || toast.opacity > 0

    RoundedPanel {
        id: toast

        objectName: "toastPanel"
        anchors.horizontalCenter: parent.horizontalCenter
        y: place.height - height - 20
        width: row.width + 28
        height: row.height + 16
        radius: 8
        opacity: 0
        color: Qt.alpha(Theme.bg2, 0.96)
        outlineColor: Theme.floatOutline
        outlineWidth: 1
        shadowColor: Theme.floatShadow
        shadowRadius: 12
        shadowOffset: 4

        Accessible.role: Accessible.AlertMessage
        Accessible.name: place.message.text
        Accessible.ignored: !place.message.shown

        Row {
            id: row

            x: 14
            y: 8
            spacing: 6

            Symbol {
                id: bolt

                objectName: "toastSymbol"
                anchors.verticalCenter: parent.verticalCenter
                name: "bolt.fill"
                size: 11
                color: Theme.accent
            }

            Text {
                objectName: "toast"
                width: Math.min(implicitWidth, place.width - 80 - bolt.width)
                text: place.message.text
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                maximumLineCount: 1
                color: Theme.ink
                font.family: Theme.uiFamily
                font.pixelSize: 12
                font.weight: Font.Medium
            }
        }

        states: State {
            name: "shown"
            when: place.message.shown

            PropertyChanges {
                toast.opacity: 1
                lift.y: 0
            }
        }

        transform: Translate {
            id: lift

            y: toast.height + 20
        }

        transitions: Transition {
            NumberAnimation {
                targets: [toast, lift]
                properties: "opacity,y"
                duration: 200
                easing.type: Easing.OutCubic
            }
        }
    }
}
