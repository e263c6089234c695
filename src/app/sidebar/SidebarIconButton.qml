// A button that is a symbol alone. What it does is said when the pointer rests on it, and to
// assistive tools.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    required property string help
    // What it does that to.
    property string target: ""

    padding: 3
    opacity: pressed ? 0.7 : 1
    focusRadius: 4

    Accessible.name: help
    Accessible.description: target

    Loader {
        objectName: "help"
        active: control.hovered
        // The names of this file reach into the component, though the linter cannot know.
        // qmllint disable unqualified
        sourceComponent: MarrowToolTip {
            objectName: "toolTip"
            parent: control
            text: control.help
            visible: control.hovered
        }
        // qmllint enable unqualified
    }
}
