// The interactive treemap of one folder: the surface with its tiles, and the tooltip above it.
import QtQuick
import Tessaly.Map

TreemapSurface {
    id: canvas
    objectName: "treemapCanvas"

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Treemap")
    Accessible.description: canvas.tooltip.shown
        ? `${canvas.tooltip.name}, ${canvas.tooltip.size}, ${canvas.tooltip.facts}` : ""

    MapTooltip {
        x: canvas.tooltip.place.x
        y: canvas.tooltip.place.y
        width: canvas.tooltip.width
        visible: canvas.tooltip.shown
        tip: canvas.tooltip
    }
}
