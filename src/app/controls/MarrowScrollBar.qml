// The scroll bar of all views: a thumb without a track, brighter while it is used; hidden if
// everything is visible.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

T.ScrollBar {
    id: bar

    property real thickness: 6

    objectName: "scrollBar"
    implicitWidth: thickness + 2
    rightPadding: 2
    visible: size < 1
    minimumSize: 0.08

    contentItem: Rectangle {
        implicitWidth: bar.thickness
        radius: width / 2
        color: Qt.alpha(Theme.ink, bar.active || bar.pressed ? 0.3 : 0.12)
    }
}
