// A button that looks like a text field. It opens the search, which has the real field.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model

MarrowButton {
    id: field

    text: "Search files, folders & caches…"
    leftPadding: 10
    rightPadding: 6
    topPadding: 5
    bottomPadding: 5
    opacity: pressed ? 0.75 : 1
    focusRadius: 8

    background: RoundedPanel {
        objectName: "background"
        radius: 8
        color: Qt.alpha(Theme.bg3, 0.7)
        outlineColor: Theme.controlOutline
        outlineWidth: 1
    }

    contentItem: RowLayout {
        spacing: 7

        Symbol {
            objectName: "searchSymbol"
            name: "magnifyingglass"
            size: 11
            color: Theme.accent
        }

        Text {
            objectName: "searchText"
            Layout.fillWidth: true
            text: field.text
            elide: Text.ElideRight
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 12
        }

        KeyCap {
            objectName: "keyCap"
            text: Wording.searchKeys
        }
    }
}
