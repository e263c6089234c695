// The line between two groups of a menu.
import QtQuick
import Tessaly.Controls

Item {
    implicitHeight: 9
    width: parent ? parent.width : implicitWidth

    Accessible.role: Accessible.Separator

    Rectangle {
        objectName: "menuRule"
        x: 8
        y: 4
        width: parent.width - 16
        height: 1
        color: Theme.separator
    }
}
