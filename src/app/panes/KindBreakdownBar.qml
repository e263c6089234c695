// The kinds of a folder's content: a bar with a segment for each, and a legend of the largest six.
// Without content it takes up no space.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

Column {
    id: bar

    property alias node: kinds.node
    readonly property alias empty: kinds.empty

    visible: !kinds.empty
    spacing: 6

    Accessible.role: Accessible.StaticText
    Accessible.name: kinds.summary

    KindBreakdownModel {
        id: kinds
    }

    Item {
        width: bar.width
        height: 10

        BreakdownSegments {
            objectName: "segments"
            slices: kinds
        }
    }

    Row {
        objectName: "legend"
        spacing: 14

        Repeater {
            model: kinds

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
