// A colour of the map with the kind of files that it shows.
import QtQuick
import Tessaly.Controls

Row {
    id: entry

    required property color dotColor
    required property string label

    spacing: 5

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    RoundedPanel {
        objectName: "dot"
        anchors.verticalCenter: parent.verticalCenter
        width: 7
        height: 7
        radius: 3.5
        color: entry.dotColor
    }

    Text {
        objectName: "dotLabel"
        text: entry.label
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 10
    }
}
