// How much a scan could not read. What that is, is listed while the pointer rests there, or the
// keyboard does.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls
import Tessaly.Panes

T.Control {
    id: figure

    required property DiskMapState map

    readonly property bool isAsked: visible && (hovered || visualFocus)

    implicitWidth: Math.ceil(implicitContentWidth)
    implicitHeight: implicitContentHeight
    visible: map.unreadableText !== ""
    hoverEnabled: true
    focusPolicy: Qt.TabFocus

    Accessible.role: Accessible.StaticText
    Accessible.name: map.unreadableText
    Accessible.description: map.unreadableList
    Accessible.focusable: true

    contentItem: Text {
        objectName: "figure"
        text: figure.map.unreadableText
        color: Theme.warning
        font.family: Theme.monoFamily
        font.pixelSize: 10
    }

    RoundedPanel {
        objectName: "focusRing"
        x: -4
        y: -3
        width: figure.width + 8
        height: figure.height + 6
        radius: 5
        visible: figure.visualFocus
        outlineColor: Qt.alpha(Theme.accent, 0.9)
        outlineWidth: 2
    }

    KeyboardGoesOn {
        control: figure
    }

    // Not there before it is asked for: the list is long.
    Loader {
        active: figure.isAsked
        // The names of this file reach into the component, though the linter cannot know.
        // qmllint disable unqualified
        sourceComponent: MarrowToolTip {
            objectName: "unreadableTip"
            parent: figure
            // Above the header there is no room for a list.
            y: figure.height + 6
            text: figure.map.unreadableList
            visible: figure.isAsked
        }
        // qmllint enable unqualified
    }
}
