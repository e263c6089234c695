// A word about a row, on a ground of its own.
import QtQuick
import Tessaly.Controls

RoundedPanel {
    id: badge

    required property string text
    property color tint: Theme.muted
    property int labelSize: 10
    property int labelWeight: Font.Medium

    width: Math.ceil(label.implicitWidth) + 12
    height: 15
    radius: height / 2
    color: Qt.alpha(tint, 0.16)

    Text {
        id: label

        objectName: "badgeText"
        anchors.centerIn: parent
        text: badge.text
        textFormat: Text.PlainText
        color: badge.tint
        font.family: Theme.uiFamily
        font.pixelSize: badge.labelSize
        font.weight: badge.labelWeight
        Accessible.ignored: true
    }
}
