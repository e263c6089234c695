// The button that lists the volumes, and the list: arrows go through it, Return scans, Escape leaves.
// With one volume there is nothing to choose from, and no button.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls
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
    onClicked: popup.open()
    onVisibleChanged: {
        if (!visible)
            popup.close()
    }

    Accessible.name: "Volumes"

    background: RoundedPanel {
        objectName: "background"
        radius: 4
        color: Qt.rgba(1, 1, 1, 0.06)
    }

    T.Popup {
        id: popup

        property bool openedByKey: false

        objectName: "volumePopup"
        x: control.width - width
        y: control.height + 4
        width: 204
        height: Math.min(list.contentHeight + 8, 308)
        padding: 4
        margins: 8
        focus: true
        // A press elsewhere puts the list away and does nothing else; what lies there is not pointed at.
        modal: true
        closePolicy: T.Popup.CloseOnPressOutside
        onOpened: list.forceActiveFocus(Qt.PopupFocusReason)
        // The keyboard goes back to the button, unless it has gone somewhere else.
        onClosed: {
            const now = control.Window.activeFocusItem
            if (now === null || now.parent === null)
                control.forceActiveFocus(openedByKey ? Qt.TabFocusReason : Qt.PopupFocusReason)
        }
        onAboutToShow: {
            openedByKey = control.visualFocus
            list.currentIndex = 0
            list.positionViewAtBeginning()
        }

        background: RoundedPanel {
            radius: 8
            color: Theme.bg3
            outlineColor: Qt.rgba(1, 1, 1, 0.14)
            outlineWidth: 1
            shadowColor: Qt.rgba(0, 0, 0, 0.6)
            shadowRadius: 12
            shadowOffset: 4
        }

        // qmllint disable deferred-property-id
        contentItem: ListView {
            id: list
            // qmllint enable deferred-property-id

            function choose() {
                const row = currentItem as VolumeMenuRow
                if (row === null)
                    return
                popup.close()
                control.actions.scanPath(row.path)
            }

            objectName: "volumeList"
            clip: true
            model: control.actions.volumes
            boundsBehavior: Flickable.StopAtBounds
            // The mouse pulls nothing here; it has the wheel.
            interactive: LastPress.byFinger
            keyNavigationEnabled: true
            highlightMoveDuration: 0
            keyNavigationWraps: true
            // qmllint disable unqualified
            delegate: VolumeMenuRow {
                menu: list
                onChosen: {
                    list.currentIndex = index
                    list.choose()
                }
            }
            // qmllint enable unqualified

            Accessible.role: Accessible.PopupMenu
            Accessible.name: "Volumes"

            Keys.onEscapePressed: popup.close()
            Keys.onReturnPressed: list.choose()
            Keys.onEnterPressed: list.choose()
            Keys.onSpacePressed: list.choose()
            Keys.onPressed: event => {
                event.accepted = true
                if (event.key === Qt.Key_Home)
                    list.currentIndex = 0
                else if (event.key === Qt.Key_End)
                    list.currentIndex = list.count - 1
                else
                    // The keyboard stays in the list as long as it is open.
                    event.accepted = event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab
            }

            WheelScroll {
                view: list
            }

            T.ScrollBar.vertical: T.ScrollBar {
                implicitWidth: 6
                visible: size < 1

                contentItem: Rectangle {
                    implicitWidth: 6
                    radius: 3
                    color: Qt.rgba(1, 1, 1, 0.2)
                }
            }
        }
    }
}
