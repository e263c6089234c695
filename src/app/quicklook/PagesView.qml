// The pages of a document, one below the other.
import QtQuick
import Tessaly.QuickLook

ScrollList {
    id: view

    visible: preview.body === PreviewScreen.Pages
    focus: visible
    model: visible ? preview.pictureCount : 0
    spacing: 14

    Accessible.name: preview.description

    header: Item {
        height: 20
    }
    footer: Item {
        height: 20
    }

    // qmllint disable unqualified
    delegate: PreviewPicture {
        readonly property real fit: Math.min(1, (ListView.view.width - 40) / Math.max(1, implicitWidth))

        objectName: "page"
        x: Math.round((ListView.view.width - width) / 2)
        width: implicitWidth * fit
        height: Math.round(implicitHeight * fit)
        preview: view.preview

        Accessible.role: Accessible.Graphic
        Accessible.name: "Page " + (index + 1)
    }
    // qmllint enable unqualified
}
