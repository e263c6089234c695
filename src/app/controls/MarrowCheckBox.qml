// A check box without a label. It shows the value of `on` and never changes it: a click only
// requests the change.
import QtQuick
import Tessaly.Controls

MarrowButton {
    id: control

    required property bool on

    implicitWidth: 28
    implicitHeight: 28
    opacity: !enabled ? 0.45 : pressed ? 0.8 : 1
    focusRadius: 5
    // Makes it a check box for assistive tools.
    checkable: true
    checked: on
    // Restores the binding, which the template's own toggling has replaced.
    onClicked: checked = Qt.binding(() => control.on)

    Accessible.onToggleAction: control.press()

    contentItem: Item {}

    background: Item {
        RoundedPanel {
            objectName: "box"
            anchors.centerIn: parent
            width: 16
            height: 16
            radius: 4
            color: control.on ? Theme.accent : control.hovered ? Theme.hoverFill : Theme.softFill
            outlineColor: control.on ? Theme.primaryOutline : Theme.panelOutline
            outlineWidth: 1

            Symbol {
                objectName: "tick"
                anchors.centerIn: parent
                visible: control.on
                name: "checkmark"
                size: 11
                bold: true
                color: Theme.ink
            }
        }
    }
}
