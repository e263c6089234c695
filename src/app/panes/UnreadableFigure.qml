// The number of items that a scan could not read. They are listed while the pointer rests on the
// number or it has the focus.
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

    // Loaded only on demand, since the list is long.
    Loader {
        active: figure.isAsked
        // qmllint disable unqualified
        sourceComponent: MarrowToolTip {
            objectName: "unreadableTip"
            parent: figure
            // The space above the header is too small for the list.
            y: figure.height + 6
            text: figure.map.unreadableList
            visible: figure.isAsked
        }
        // qmllint enable unqualified
    }
}
