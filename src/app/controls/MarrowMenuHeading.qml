// The heading of a group of a menu.
import QtQuick
import Tessaly.Controls

Item {
    id: heading

    required property string text

    implicitWidth: Math.ceil(label.implicitWidth) + 16
    implicitHeight: 22
    width: parent ? parent.width : implicitWidth

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Text {
        id: label

        objectName: "menuHeading"
        anchors.verticalCenter: parent.verticalCenter
        x: 8
        width: heading.width - 16
        text: heading.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
        font.weight: Font.DemiBold
    }
}
