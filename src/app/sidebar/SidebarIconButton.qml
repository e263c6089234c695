// A button with a symbol only. Its action is named by a tool tip and to assistive tools.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    required property string help
    // What the action applies to, for assistive tools.
    property string target: ""

    padding: 3
    opacity: pressed ? 0.7 : 1
    focusRadius: 4

    Accessible.name: help
    Accessible.description: target

    Loader {
        objectName: "help"
        active: control.hovered
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
