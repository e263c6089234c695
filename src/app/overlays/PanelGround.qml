// The surface of what lies in front of others: a raised card, or flat where it fills its place. A click
// on a card does not reach what lies under it.
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
