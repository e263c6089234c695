// A row of a menu: its action and the shortcut. It is triggered after its menu has closed.
import QtQuick
import Tessaly.Controls

MenuRow {
    id: row

    // The displayed shortcut; empty for none.
    property string shortcut: ""
    // The action removes something, maybe for good.
    property bool destructive: false
    readonly property bool highlighted: focus && enabled

    implicitWidth: Math.ceil(label.implicitWidth + (shortcut !== "" ? keys.implicitWidth + 24 : 0)) + 16
    implicitHeight: 26
    width: parent ? parent.width : implicitWidth

    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.description: shortcut
    Accessible.focusable: enabled
    Accessible.focused: activeFocus
    Accessible.onPressAction: row.pick()

    RoundedPanel {
        objectName: "menuFill"
        anchors.fill: parent
        radius: 5
        color: row.highlighted ? Theme.accent : "transparent"
    }

    Text {
        id: label

        objectName: "menuLabel"
        anchors.verticalCenter: parent.verticalCenter
        x: 8
        width: (row.shortcut !== "" ? keys.x - 24 : row.width - 8) - x
        text: row.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: {
            if (!row.enabled)
                return Theme.muted
            return row.destructive && !row.highlighted ? Theme.error : Theme.ink
        }
        font.family: Theme.uiFamily
        font.pixelSize: 12
    }

    Text {
        id: keys

        objectName: "menuKeys"
        anchors.verticalCenter: parent.verticalCenter
        x: row.width - width - 8
        visible: text !== ""
        text: row.shortcut
        textFormat: Text.PlainText
        color: row.highlighted ? Theme.ink : Theme.muted
        opacity: row.enabled ? 1 : 0.6
        font.family: Theme.uiFamily
        font.pixelSize: 12
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onEntered: row.forceActiveFocus(Qt.OtherFocusReason)
        onClicked: row.pick()
    }
}
