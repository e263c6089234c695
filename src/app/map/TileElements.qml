// The tiles of a canvas as elements for assistive programs. Invisible, and transparent to the
// pointer.
import QtQuick
import Tessaly.Map
import Tessaly.Model

Item {
    id: elements

    required property TreemapSurface surface

    Repeater {
        id: tiles

        model: TileElementModel {
            canvas: elements.surface
        }

        // qmllint disable unqualified
        delegate: Item {
            id: element

            required property int index
            required property rect place
            required property string name
            required property string facts
            required property bool selectable
            required property bool selected
            required property nodeHandle node

            objectName: "tileElement"
            x: place.x
            y: place.y
            width: place.width
            height: place.height

            Accessible.role: Accessible.Button
            Accessible.name: name
            Accessible.description: facts
            Accessible.focusable: true
            Accessible.focused: elements.surface.activeFocus
                && elements.surface.keyboardTile === index
            Accessible.checkable: selectable
            Accessible.checked: selected
            Accessible.onPressAction: elements.surface.press(element.node)
            Accessible.onToggleAction: elements.surface.toggle(element.node)
        }
        // qmllint enable unqualified
    }

    Connections {
        target: elements.surface

        function onKeyboardTileChanged() {
            elements.surface.tellFocus(tiles.itemAt(elements.surface.keyboardTile))
        }
    }
}
