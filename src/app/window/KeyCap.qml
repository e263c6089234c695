// A key or key combination, drawn as key caps.
import QtQuick
import Tessaly.Controls

RoundedPanel {
    id: cap

    required property string text

    implicitWidth: label.implicitWidth + 10
    implicitHeight: label.implicitHeight + 4
    radius: 4
    color: Theme.keyCapFill

    Text {
        id: label

        objectName: "keyCapText"
        anchors.centerIn: parent
        text: cap.text
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 10
    }
}
