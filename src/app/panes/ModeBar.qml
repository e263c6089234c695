// The row above the map: how the tree is shown, and what can be done with what is selected.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

Rectangle {
    id: bar

    required property ScanSession session

    implicitHeight: row.implicitHeight + 12
    color: Theme.bg2

    ModeBarState {
        id: modes

        session: bar.session
    }

    Flickable {
        id: scroller

        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        contentWidth: row.width
        contentHeight: height
        clip: contentWidth > width
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds

        RowLayout {
            id: row

            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(implicitWidth, scroller.width)
            spacing: 8

            MarrowPill {
                objectName: "treemapMode"
                text: "Treemap"
                active: modes.showsTreemap
                onClicked: modes.showTreemap()
            }

            MarrowPill {
                objectName: "heatmap"
                text: bar.session.heatmap ? "Age Heatmap" : "Age"
                active: bar.session.heatmap
                onClicked: bar.session.heatmap = !bar.session.heatmap
            }

            Item {
                Layout.fillWidth: true
            }

            MarrowPill {
                objectName: "queueSelection"
                visible: modes.selectedCount > 0
                text: `Queue (${modes.selectedCount})`
                active: false
                onClicked: bar.session.queueSelected()
            }

            MarrowPill {
                objectName: "clearSelection"
                visible: modes.selectedCount > 0
                text: "Clear"
                active: false
                onClicked: bar.session.clearSelection()
            }

            MarrowPill {
                objectName: "putBack"
                visible: modes.canPutBack
                text: "Put Back"
                active: false
                onClicked: bar.session.undoTrash()
            }
        }
    }
}
