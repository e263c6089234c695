// One step of several: its number in a small circle, and what to do.
import QtQuick
import Tessaly.Controls

Item {
    id: step

    required property int number
    required property string text

    implicitHeight: Math.max(circle.height, label.y + Math.ceil(label.implicitHeight))

    Accessible.role: Accessible.ListItem
    Accessible.name: number + ". " + text

    RoundedPanel {
        id: circle

        objectName: "circle"
        width: 22
        height: 22
        radius: 11
        color: Qt.alpha(Theme.accent, 0.18)
        outlineColor: Qt.alpha(Theme.accent, 0.45)
        outlineWidth: 1

        Text {
            objectName: "number"
            anchors.centerIn: parent
            text: step.number
            color: Theme.accent
            font.family: Theme.uiFamily
            font.pixelSize: 11
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
    }

    Text {
        id: label

        objectName: "text"
        x: circle.width + 12
        y: 3
        width: step.width - x
        text: step.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        lineHeight: 1.15
        color: Theme.secondary
        font.family: Theme.uiFamily
        font.pixelSize: 13
        Accessible.ignored: true
    }
}
