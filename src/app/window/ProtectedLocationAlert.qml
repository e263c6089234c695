// Asks before a critical item is moved to the Trash. Cancel has the keyboard focus at first.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Overlays
import Tessaly.Window

QuestionPanel {
    id: alert

    required property ProtectedLocationState warning
    required property ScanSession session

    panelWidth: 380
    shown: alert.warning.shown
    firstControl: cancel
    onDismissed: alert.session.removal.dismissWarning()

    Accessible.role: Accessible.AlertMessage
    Accessible.name: title.text
    Accessible.description: alert.warning.message

    Column {
        x: 20
        width: alert.panelWidth - 40
        topPadding: 20
        bottomPadding: 20
        spacing: 10

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "exclamationmark.triangle.fill"
            size: 30
            color: Theme.warning
        }

        Text {
            id: title

            objectName: "alertTitle"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Protected location"
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 14
            font.weight: Font.Bold
        }

        Text {
            objectName: "alertMessage"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: alert.warning.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 12
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 12
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 8
            spacing: 10

            MarrowSecondaryButton {
                objectName: "overrule"
                enabled: !alert.session.removal.moving
                width: 160
                height: 32
                text: "Move to Trash"
                labelColor: Theme.error
                onClicked: alert.session.overruleWarning()
            }

            MarrowPrimaryButton {
                id: cancel

                objectName: "dismiss"
                width: 160
                height: 32
                text: "Cancel"
                onClicked: alert.session.removal.dismissWarning()
            }
        }
    }
}
