// The background of an overlay: a raised card, or flat if it fills its area. Clicks do not pass
// through a card.
import QtQuick
import Tessaly.Controls

RoundedPanel {
    property bool isRaised: true

    radius: isRaised ? 12 : 0
    color: isRaised ? Theme.bg2 : Theme.bg
    outlineColor: isRaised ? Theme.panelOutline : "transparent"
    outlineWidth: 1
    shadowColor: isRaised ? Theme.panelShadow : "transparent"
    shadowRadius: 18
    shadowOffset: 8

    MouseArea {
        anchors.fill: parent
        enabled: parent.isRaised
        acceptedButtons: Qt.AllButtons
    }
}
