// The panel beside the pointer that describes the tile under it.
import QtQuick
import Tessaly.Controls
import Tessaly.Map

RoundedPanel {
    id: panel
    objectName: "mapTooltip"

    required property TooltipState tip

    // The path, elided in the middle to fit three lines. A line may be up to a character shorter
    // than the width.
    MiddleElision {
        id: shortPath
        font: path.font
        text: panel.tip.path
        room: 3 * (path.width - path.font.pixelSize)
    }

    Binding {
        target: panel.tip
        property: "height"
        value: panel.height
    }

    implicitHeight: lines.implicitHeight + 24
    height: implicitHeight
    radius: 10
    color: Qt.alpha(Theme.bg2, 0.95)
    outlineColor: Theme.panelOutline
    outlineWidth: 1
    shadowColor: Theme.panelShadow
    shadowRadius: 18
    shadowOffset: 8

    Column {
        id: lines
        x: 12
        y: 12
        width: panel.width - 24
        spacing: 4

        Row {
            width: parent.width
            spacing: 6

            Rectangle {
                objectName: "tooltipDot"
                y: Math.round((name.firstLineHeight - height) / 2)
                width: 10
                height: 10
                radius: 5
                color: panel.tip.tint
            }
            Text {
                id: name
                objectName: "tooltipName"
                readonly property real firstLineHeight: metrics.height
                width: parent.width - 16
                text: panel.tip.name
                textFormat: Text.PlainText
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                color: Theme.ink
                font { family: Theme.uiFamily; pixelSize: 13; weight: Font.Bold }

                FontMetrics { id: metrics; font: name.font }
            }
        }
        Text {
            objectName: "tooltipSize"
            text: panel.tip.size
            textFormat: Text.PlainText
            color: Theme.ink
            font { family: Theme.roundedFamily; pixelSize: 20; weight: Font.Bold }
        }
        Text {
            objectName: "tooltipFacts"
            width: parent.width
            text: panel.tip.facts
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.ink
            font { family: Theme.monoFamily; pixelSize: 11 }
        }
        Text {
            objectName: "tooltipAge"
            visible: text.length > 0
            text: panel.tip.age
            textFormat: Text.PlainText
            color: Theme.muted
            font { family: Theme.monoFamily; pixelSize: 11 }
        }
        Text {
            id: path
            objectName: "tooltipPath"
            width: parent.width
            text: shortPath.shortened
            textFormat: Text.PlainText
            wrapMode: Text.WrapAnywhere
            elide: Text.ElideRight
            maximumLineCount: 3
            color: Theme.muted
            opacity: 0.8
            font { family: Theme.monoFamily; pixelSize: 10 }
        }
    }
}
