// Close, minimise and zoom, for a window without a frame.
import QtQuick
import Tessaly.Controls

Row {
    id: buttons

    signal closeAsked
    signal minimiseAsked
    signal zoomAsked

    readonly property bool lit: hover.hovered || close.visualFocus || minimise.visualFocus
        || zoom.visualFocus

    spacing: 8

    HoverHandler {
        id: hover
    }

    WindowButton {
        id: close

        objectName: "closeWindow"
        tint: Theme.windowClose
        sign: "xmark"
        lit: buttons.lit
        Accessible.name: "Close"
        onClicked: buttons.closeAsked()
    }

    WindowButton {
        id: minimise

        objectName: "minimiseWindow"
        tint: Theme.windowMinimise
        sign: "minus"
        lit: buttons.lit
        Accessible.name: "Minimise"
        onClicked: buttons.minimiseAsked()
    }

    WindowButton {
        id: zoom

        objectName: "zoomWindow"
        tint: Theme.windowZoom
        sign: "plus"
        lit: buttons.lit
        Accessible.name: "Zoom"
        onClicked: buttons.zoomAsked()
    }
}
