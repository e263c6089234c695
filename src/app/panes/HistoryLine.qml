// The history of a folder as a line, with the scan under the pointer in words.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

Item {
    id: line

    required property HistoryListState history
    // The scan to describe while the pointer is elsewhere; -1 for none.
    property int markedRow: -1

    Accessible.role: Accessible.Chart
    Accessible.name: line.history.summary

    RoundedPanel {
        anchors.fill: parent
        radius: 10
        color: Theme.chipFill
        outlineColor: Theme.chipOutline
        outlineWidth: 1
    }

    HistoryChart {
        id: chart

        objectName: "historyChart"
        x: 8
        y: 6
        width: parent.width - 16
        height: parent.height - 12
        history: line.history
        marked: hover.hovered ? chart.nearest(hover.point.position.x) : line.markedRow

        HoverHandler {
            id: hover
        }
    }

    RoundedPanel {
        id: bubble

        readonly property real pointX: chart.x + chart.markPlace.x
        readonly property real pointY: chart.y + chart.markPlace.y
        readonly property real above: pointY - height - 12

        objectName: "historyBubble"
        x: Math.round(Math.max(8, Math.min(pointX - width / 2, line.width - width - 8)))
        y: Math.round(above >= 4 ? above : pointY + 12)
        width: words.implicitWidth + 16
        height: words.implicitHeight + 8
        visible: chart.markText !== ""
        radius: 6
        color: Theme.bg2
        outlineColor: Theme.panelOutline
        outlineWidth: 1
        shadowColor: Theme.floatShadow
        shadowRadius: 6
        shadowOffset: 2

        Text {
            id: words

            objectName: "historyWords"
            x: 8
            y: 4
            text: chart.markText
            textFormat: Text.PlainText
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 11
        }
    }
}
