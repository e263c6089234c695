// The frame of what waits to be thrown away, over the corner of the window.
import QtQuick
import Tessaly.Controls
import Tessaly.Overlays

RoundedPanel {
    id: queue

    signal closed

    width: 420
    height: 360
    radius: 12
    color: Theme.bg2
    outlineColor: Qt.rgba(1, 1, 1, 0.1)
    outlineWidth: 1
    shadowColor: Qt.rgba(0, 0, 0, 0.45)
    shadowRadius: 20

    // What lies under it gets no clicks through it.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: {}
    }

    PlainFrame {
        anchors.fill: parent
        anchors.margins: 2
        title: "Cleanup Queue"
        surfaceColor: Theme.bg2
        onClosed: queue.closed()
    }
}
