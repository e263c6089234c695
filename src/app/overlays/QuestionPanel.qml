// A modal question: a panel in the middle of the window, as high as its content. Escape and a click
// beside the panel dismiss it.
import QtQuick
import Tessaly.Controls
import Tessaly.Overlays

InputShield {
    id: question

    required property real panelWidth
    default property alias body: bodyPlace.data

    dimColor: Theme.deepDim

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
