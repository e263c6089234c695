// A button with a symbol only, which opens an overlay.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: button

    symbolSize: 13
    symbolColor: hovered ? Theme.ink : Theme.muted
    text: ""
    leftPadding: 6
    rightPadding: 6
    topPadding: 5
    bottomPadding: 5
    opacity: pressed ? 0.75 : 1
    focusRadius: 6

    background: RoundedPanel {
        objectName: "background"
        radius: 6
        color: button.hovered ? Theme.hoverFill : "transparent"
    }
}
