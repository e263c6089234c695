// The row above the map: the modes of showing the tree, and the actions for the selection. A row
// that is too long scrolls, and shows its end when actions are added.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

Rectangle {
    id: bar

    required property DiskMapState map
    required property ScanSession session

    implicitHeight: row.implicitHeight + 12
    color: Theme.bg2

    Connections {
        target: bar.map.bar

        function onActionsAdded() {
            scroller.showEnd()
        }
    }

    MarrowScrollRow {
        id: scroller

        objectName: "modeScroller"
        anchors.fill: parent
        anchors.leftMargin: 14 - ringRoom
        anchors.rightMargin: 14 - ringRoom
        row: row

        RowLayout {
            id: row

            x: scroller.ringRoom
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(implicitWidth, scroller.width - 2 * scroller.ringRoom)
            spacing: 6

            Repeater {
                model: bar.map.modes

                // qmllint disable unqualified
                Row {
                    id: choice

                    required property int index
                    required property string key
                    required property string label
                    required property bool isActive
                    required property bool startsGroup

                    spacing: row.spacing

                    Rectangle {
                        objectName: "modeRule"
                        anchors.verticalCenter: parent.verticalCenter
                        visible: choice.startsGroup
                        width: 1
                        height: 14
                        color: Theme.strongHairline
                    }

                    ModePill {
                        objectName: `${choice.key}Mode`
                        text: choice.label
                        active: choice.isActive
                        onClicked: bar.map.modes.choose(choice.index)
                    }
                }
                // qmllint enable unqualified
            }

            ModePill {
                objectName: "heatmap"
                text: bar.map.bar.heatmapText
                active: bar.session.shown.heatmap
                onClicked: bar.session.shown.heatmap = !bar.session.shown.heatmap
            }

            ModePill {
                objectName: "watch"
                enabled: bar.map.bar.canWatch
                text: bar.map.bar.watchText
                active: bar.session.watch.watching
                onClicked: bar.map.bar.toggleWatch()
            }

            Item {
                Layout.fillWidth: true
            }

            ModePill {
                objectName: "queueSelection"
                visible: bar.map.bar.hasSelection
                text: bar.map.bar.queueText
                active: false
                onClicked: bar.session.queueSelected()
            }

            ModePill {
                objectName: "zipSelection"
                enabled: !bar.session.removal.moving
                visible: bar.map.bar.hasSelection
                text: bar.map.bar.zipText
                active: false
                onClicked: bar.map.bar.zipSelected()
            }

            ModePill {
                objectName: "clearSelection"
                visible: bar.map.bar.hasSelection
                text: "Clear"
                active: false
                onClicked: bar.session.selection.clearSelection()
            }

            ModePill {
                objectName: "putBack"
                enabled: !bar.session.removal.moving
                visible: bar.map.bar.canPutBack
                text: "Put Back"
                active: false
                onClicked: bar.session.undoTrash()
            }
        }
    }
}
