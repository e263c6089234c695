// The button of another thing that may be done.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    labelSize: 12
    labelWeight: Font.Medium
    labelColor: Theme.ink
    leftPadding: 12
    rightPadding: 12
    topPadding: 7
    bottomPadding: 7
    opacity: pressed ? 0.75 : 1
    focusRadius: 8

    background: RoundedPanel {
        objectName: "background"
        radius: 8
        color: Theme.bg3
        outlineColor: Qt.rgba(1, 1, 1, 0.09)
        outlineWidth: 1
    }
}
