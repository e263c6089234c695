// The row above the map: how the tree is shown, and what can be done with what is selected. Where it
// is too long it scrolls, by the wheel, by the finger, and by itself to what the keyboard comes to and
// to what can be done once something is selected.
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

Rectangle {
    id: bar

    required property ScanSession session

    // How many acts stand at the end, and whether more of them are coming.
    readonly property int acts: (choices.selectedCount > 0 ? 3 : 0) + (choices.canPutBack ? 1 : 0)
    property int actsBefore: 0
    property bool showsEnd: false

    implicitHeight: row.implicitHeight + 12
    color: Theme.bg2
    onActsChanged: {
        showsEnd = acts > actsBefore
        actsBefore = acts
    }

    ModeBarState {
        id: choices

        session: bar.session
    }

    ModeListModel {
        id: modes

        session: bar.session
    }

    Flickable {
        id: scroller

        // Where the keyboard has come to by Tab; what was clicked is in sight already.
        readonly property Item keyboardItem: {
            const control = Window.activeFocusItem as T.Control
            return control !== null && control.visualFocus ? control : null
        }

        function scrollTo(x) {
            contentX = Math.max(0, Math.min(x, contentWidth - width))
        }

        function holds(item) {
            while (item !== null && item !== row)
                item = item.parent
            return item !== null
        }

        function reveal(item) {
            const left = item.mapToItem(row, 0, 0).x
            if (left - 24 < contentX)
                scrollTo(left - 24)
            else if (left + item.width + 24 > contentX + width)
                scrollTo(left + item.width + 24 - width)
        }

        objectName: "modeScroller"
        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        contentWidth: row.width
        contentHeight: height
        clip: contentWidth > width
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        onContentWidthChanged: {
            scrollTo(bar.showsEnd ? contentWidth : contentX)
            bar.showsEnd = false
        }
        onWidthChanged: scrollTo(contentX)
        onKeyboardItemChanged: {
            if (keyboardItem !== null && holds(keyboardItem))
                reveal(keyboardItem)
        }

        // Either way the wheel is turned, since there is but one way to go.
        WheelHandler {
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            orientation: Qt.Vertical
            onWheel: event => scroller.scrollTo(scroller.contentX - (event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 2))
        }

        RowLayout {
            id: row

            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(implicitWidth, scroller.width)
            spacing: 6

            Repeater {
                model: modes

                // The names of this file reach into the component, though the linter cannot know.
                // qmllint disable unqualified
                Row {
                    id: choice

                    required property int index
                    required property string key
                    required property string label
                    required property bool isActive
                    required property bool startsGroup

                    spacing: row.spacing

                    Rectangle {
                        objectName: "modeRule"
                        anchors.verticalCenter: parent.verticalCenter
                        visible: choice.startsGroup
                        width: 1
                        height: 14
                        color: Qt.rgba(1, 1, 1, 0.12)
                    }

                    ModePill {
                        objectName: `${choice.key}Mode`
                        text: choice.label
                        active: choice.isActive
                        onClicked: modes.choose(choice.index)
                    }
                }
                // qmllint enable unqualified
            }

            ModePill {
                objectName: "heatmap"
                text: bar.session.heatmap ? "Age Heatmap" : "Age"
                active: bar.session.heatmap
                onClicked: bar.session.heatmap = !bar.session.heatmap
            }

            ModePill {
                objectName: "watch"
                enabled: choices.canWatch
                text: bar.session.watching ? "Watching" : "Watch"
                active: bar.session.watching
                onClicked: choices.toggleWatch()
            }

            Item {
                Layout.fillWidth: true
            }

            ModePill {
                objectName: "queueSelection"
                visible: choices.selectedCount > 0
                text: `Queue (${choices.selectedCount})`
                active: false
                onClicked: bar.session.queueSelected()
            }

            ModePill {
                objectName: "zipSelection"
                visible: choices.selectedCount > 0
                text: `Zip (${choices.selectedCount})`
                active: false
                onClicked: choices.zipSelected()
            }

            ModePill {
                objectName: "clearSelection"
                visible: choices.selectedCount > 0
                text: "Clear"
                active: false
                onClicked: bar.session.clearSelection()
            }

            ModePill {
                objectName: "putBack"
                visible: choices.canPutBack
                text: "Put Back"
                active: false
                onClicked: bar.session.undoTrash()
            }
        }
    }
}
