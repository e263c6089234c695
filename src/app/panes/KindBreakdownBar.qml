// What kinds a folder's content falls into: a bar with a segment for each, and words for the largest
// six. Without any content it takes up no space.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

Column {
    id: bar

    property alias node: slices.node
    // As far as the segments may go where their gaps bring them beyond the bar.
    property real room: width
    readonly property alias empty: slices.empty

    visible: !slices.empty
    spacing: 6

    Accessible.role: Accessible.StaticText
    Accessible.name: slices.summary

    KindBreakdownModel {
        id: slices
    }

    Row {
        id: segments

        objectName: "segments"
        width: slices.empty ? bar.width : slices.barWidth(bar.width, bar.room)
        spacing: 1

        Repeater {
            model: slices

            Rectangle {
                required property color kindColor
                required property real fraction

                objectName: "segment"
                // qmllint disable unqualified
                width: slices.segmentWidth(fraction, segments.width)
                // qmllint enable unqualified
                height: 10
                radius: Math.min(3, width / 2)
                color: kindColor
            }
        }
    }

    Row {
        objectName: "legend"
        spacing: 14

        Repeater {
            model: slices

            Row {
                id: entry

                required property int index
                required property color kindColor
                required property string word
                required property string percentText

                objectName: "entry"
                visible: index < 6
                spacing: 4

                RoundedPanel {
                    objectName: "dot"
                    anchors.verticalCenter: parent.verticalCenter
                    width: 5
                    height: 5
                    radius: 2.5
                    color: entry.kindColor
                }

                Text {
                    objectName: "word"
                    anchors.verticalCenter: parent.verticalCenter
                    text: entry.word
                    color: Theme.secondary
                    font.family: Theme.uiFamily
                    font.pixelSize: 10
                }

                Text {
                    objectName: "percent"
                    anchors.verticalCenter: parent.verticalCenter
                    text: entry.percentText
                    color: Theme.muted
                    font.family: Theme.monoFamily
                    font.pixelSize: 10
                }
            }
        }
    }
}
