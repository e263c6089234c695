// The way down to the folder on screen. Each step leads back to it; the last one is where we are.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Window

Rectangle {
    id: bar

    required property ScanSession session

    implicitHeight: 36
    color: Theme.bg

    BreadcrumbModel {
        id: crumbs

        session: bar.session
    }

    ListView {
        id: list

        function scrollTo(x) {
            contentX = Math.max(originX, Math.min(x, originX + contentWidth - width))
        }

        objectName: "crumbs"
        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        orientation: ListView.Horizontal
        spacing: 6
        clip: contentWidth > width
        boundsBehavior: Flickable.StopAtBounds
        // All steps exist, also those out of sight, so that Tab reaches each.
        cacheBuffer: 1000000
        model: crumbs
        onCountChanged: positionViewAtEnd()
        onWidthChanged: positionViewAtEnd()

        // Either way the wheel is turned, since there is but one way to go.
        WheelHandler {
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            orientation: Qt.Vertical
            onWheel: event => list.scrollTo(list.contentX - (event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 2))
        }

        delegate: Row {
            id: step

            required property int index
            required property string name
            required property bool first
            required property bool last

            height: ListView.view.height
            spacing: 6

            BreadcrumbChip {
                objectName: "chip"
                anchors.verticalCenter: parent.verticalCenter
                text: step.name
                symbol: step.first ? "internaldrive" : "folder"
                current: step.last
                onClicked: step.ListView.view.model.jump(step.index)
                onActiveFocusChanged: {
                    if (activeFocus) step.ListView.view.positionViewAtIndex(step.index, ListView.Contain)
                }
            }

            Symbol {
                objectName: "chevron"
                anchors.verticalCenter: parent.verticalCenter
                visible: !step.last
                name: "chevron.right"
                size: 8
                color: Theme.muted
            }
        }
    }

    Rectangle {
        objectName: "rule"
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Qt.rgba(1, 1, 1, 0.05)
    }
}
