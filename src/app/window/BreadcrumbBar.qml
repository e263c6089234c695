// The path from the scanned folder to the folder on screen. A click on a step shows its folder.
import QtQuick
import Tessaly.Controls
import Tessaly.Window

Rectangle {
    id: bar

    required property BreadcrumbModel crumbs

    implicitHeight: 36
    color: Theme.bg

    MarrowScrollRow {
        id: scroller

        objectName: "crumbs"
        anchors.fill: parent
        anchors.leftMargin: 14 - ringRoom
        anchors.rightMargin: 14 - ringRoom
        row: steps
        onContentWidthChanged: showEnd()
        onWidthChanged: showEnd()

        Row {
            id: steps

            x: scroller.ringRoom
            height: scroller.height
            spacing: 6

            Repeater {
                model: bar.crumbs

                // qmllint disable unqualified
                Row {
                    id: step

                    required property int index
                    required property string name
                    required property bool first
                    required property bool last

                    height: steps.height
                    spacing: 6

                    BreadcrumbChip {
                        objectName: "chip"
                        anchors.verticalCenter: parent.verticalCenter
                        // The chip of the longest name fits in the visible part.
                        width: Math.min(implicitWidth, scroller.width - 2 * scroller.ringRoom)
                        text: step.name
                        symbol: step.first ? "internaldrive" : "folder"
                        current: step.last
                        onClicked: bar.crumbs.jump(step.index)
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
                // qmllint enable unqualified
            }
        }
    }

    Rectangle {
        objectName: "rule"
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.faintHairline
    }
}
