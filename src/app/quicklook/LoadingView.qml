// Shown until the content is read. It fades in slowly, so that it is not visible if reading is
// quick.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

Item {
    id: view

    required property PreviewState preview

    visible: preview.body === PreviewScreen.Loading
    focus: visible
    activeFocusOnTab: true

    Accessible.role: Accessible.Animation
    Accessible.name: preview.description
    Accessible.focusable: true

    Text {
        objectName: "loadingText"
        anchors.centerIn: parent
        text: "Loading…"
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 13

        SequentialAnimation on opacity {
            running: view.visible

            PropertyAction {
                value: 0
            }
            PauseAnimation {
                duration: 150
            }
            NumberAnimation {
                to: 1
                duration: 200
            }
        }
    }
}
