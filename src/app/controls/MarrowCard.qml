// A raised background for its content. The content fills the card within the padding, and the card
// is as large as its content unless its size is set. It passes pointer events to the items below.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

T.Control {
    id: card

    required property real radius
    required property real strokeOpacity

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 0

    background: RoundedPanel {
        objectName: "background"
        radius: card.radius
        color: Theme.bg2
        outlineColor: Qt.alpha(Theme.ink, card.strokeOpacity)
        outlineWidth: 1
        shadowColor: Theme.cardShadow
        shadowRadius: 8
        shadowOffset: 3
    }
}
