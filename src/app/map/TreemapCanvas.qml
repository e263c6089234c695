// The interactive treemap of one folder: the surface with its tiles, the tooltip above it, and the
// menu of a tile.
import QtQuick
import Tessaly.Map
import Tessaly.Model

TreemapSurface {
    id: canvas

    required property NodeActions actions

    objectName: "treemapCanvas"
    menuOpen: tileMenu.visible
    onTileMenuAsked: (node, place, byKeyboard) => tileMenu.ask(node, place, byKeyboard)

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

    AssistiveAccess {
        id: assistance
    }

    Loader {
        anchors.fill: parent
        active: assistance.wanted
        // qmllint disable unqualified
        sourceComponent: TileElements {
            surface: canvas
        }
        // qmllint enable unqualified
    }

    TileMenu {
        id: tileMenu

        tile: canvas.map.menu(tileMenu)
        actions: canvas.actions
        onOpenAsked: node => canvas.open(node)
        onTrashAsked: node => canvas.menu(node)
    }
}
