// A question that comes before everything else in the window: it dims what lies below, takes the
// pointer and the keyboard from it, and gives the keyboard back when it goes. Escape and a click
// beside the panel put it away.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

FocusScope {
    id: layer

    required property bool shown
    property real panelWidth: 380
    default property alias content: panel.data

    // The user wants none of it.
    signal dismissed

    // What had the keyboard before, and whether it showed so.
    property Item previousFocus: null
    property bool previousFocusShown: false
    // Who has come here by the keyboard sees where it is, and where it is afterwards.
    readonly property int reason: previousFocusShown ? Qt.TabFocusReason : Qt.PopupFocusReason

    visible: shown
    onShownChanged: {
        if (shown) {
            previousFocus = Window.activeFocusItem
            const control = previousFocus as T.Control
            previousFocusShown = control !== null && control.visualFocus
            forceActiveFocus(reason)
        } else {
            focus = false
            if (previousFocus !== null && previousFocus.visible)
                previousFocus.forceActiveFocus(reason)
            previousFocus = null
        }
    }

    Keys.onEscapePressed: layer.dismissed()
    // No other key gets through to what lies below.
    Keys.onPressed: event => event.accepted = true

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, 0.5)

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onClicked: layer.dismissed()
            onWheel: {}
        }
    }

    RoundedPanel {
        id: panel

        objectName: "panel"
        anchors.centerIn: parent
        width: layer.panelWidth
        height: childrenRect.height
        radius: 12
        color: Theme.bg2
        outlineColor: Qt.rgba(1, 1, 1, 0.14)
        outlineWidth: 1
        shadowColor: Qt.rgba(0, 0, 0, 0.6)
        shadowRadius: 18
        shadowOffset: 8
    }
}
