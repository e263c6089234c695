// The button that opens the menu of the mounted volumes. Choosing one scans it. Hidden if there is
// only one volume.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

MarrowButton {
    id: control

    required property SidebarState actions

    width: 20
    height: 20
    visible: control.actions.volumes.count >= 2
    symbol: "chevron.up.chevron.down"
    symbolSize: 10
    symbolColor: Theme.muted
    focusRadius: 4
    onClicked: menu.openAt(control.width - menu.width, control.height + 4, control.visualFocus)
    onVisibleChanged: {
        if (!visible)
            menu.close()
    }

    Accessible.name: "Volumes"

    background: RoundedPanel {
        objectName: "background"
        radius: 4
        color: Theme.buttonFill
    }

    MarrowMenu {
        id: menu

        name: "Volumes"
        // As wide as the sidebar allows, whatever the names.
        minimumWidth: 196
        maximumWidth: 196

        Repeater {
            model: control.actions.volumes

            // qmllint disable unqualified
            delegate: MarrowMenuItem {
                required property string name
                required property pathHandle path

                objectName: "volume"
                text: name
                onTriggered: control.actions.scanPath(path)
            }
            // qmllint enable unqualified
        }
    }
}
