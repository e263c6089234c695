// An image, scaled down to fit but never enlarged.
import QtQuick
import Tessaly.QuickLook

Item {
    id: view

    required property PreviewState preview

    visible: preview.body === PreviewScreen.Image
    focus: visible
    activeFocusOnTab: true

    Accessible.role: Accessible.Graphic
    Accessible.name: preview.description
    Accessible.focusable: true

    PreviewPicture {
        readonly property real fit: Math.min(1, (view.width - 40) / Math.max(1, implicitWidth),
            (view.height - 40) / Math.max(1, implicitHeight))

        objectName: "picture"
        x: Math.round((view.width - width) / 2)
        y: Math.round((view.height - height) / 2)
        width: implicitWidth * fit
        height: implicitHeight * fit
        preview: view.preview
        index: 0
    }
}
