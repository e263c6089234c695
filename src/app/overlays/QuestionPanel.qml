// A question in front of the whole window: a panel in its middle, as high as its content. Escape and a
// click beside the panel dismiss it.
import QtQuick
import Tessaly.Overlays

InputShield {
    id: question

    required property real panelWidth
    default property alias body: bodyPlace.data

    dimming: 0.5

    PanelGround {
        objectName: "panel"
        anchors.centerIn: parent
        width: question.panelWidth
        height: bodyPlace.childrenRect.height

        Item {
            id: bodyPlace

            anchors.fill: parent
        }
    }
}
