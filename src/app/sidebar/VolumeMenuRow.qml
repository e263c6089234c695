// A volume in the list of volumes.
import QtQuick
import Tessaly.Controls
import Tessaly.Model

Item {
    id: row

    required property int index
    required property string name
    required property pathHandle path
    required property ListView menu

    signal chosen

    objectName: "volume"
    width: menu.width
    implicitHeight: 26

    // Escape is the list's, whatever the window does with it.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape

    Accessible.role: Accessible.MenuItem
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: row.chosen()

    RoundedPanel {
        objectName: "volumeFill"
        anchors.fill: parent
        radius: 5
        color: row.ListView.isCurrentItem ? Theme.accent : "transparent"
    }

    Text {
        objectName: "volumeLabel"
        anchors.verticalCenter: parent.verticalCenter
        x: 8
        width: parent.width - 16
        text: row.name
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.ink
        font.family: Theme.uiFamily
        font.pixelSize: 12
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onEntered: row.menu.currentIndex = row.index
        onClicked: row.chosen()
    }
}
