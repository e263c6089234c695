// One thing that waits, with the button that lets it go.
import QtQuick
import Tessaly.Controls
import Tessaly.Model

// The list gives the keyboard to rows, and the row to its button.
FocusScope {
    id: row

    required property int index
    required property string name
    required property string sizeText
    required property nodeHandle node

    readonly property bool hasKeyboard: remove.activeFocus
    readonly property int focusReason: remove.focusReason

    signal removed
    // The keyboard goes on to another row, by so many.
    signal keyboardLeft(int steps, int reason)

    function takeKeyboard(reason) {
        remove.forceActiveFocus(reason)
        // It may have it already, and show so only by the reason.
        remove.focusReason = reason
    }

    implicitHeight: 40

    Text {
        objectName: "name"
        x: 14
        y: 4
        width: remove.x - 10 - x
        text: row.name
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        color: Theme.ink
        font.family: Theme.uiFamily
        font.pixelSize: 12
    }

    Text {
        objectName: "size"
        x: 14
        y: 21
        text: row.sizeText
        color: Theme.secondary
        font.family: Theme.uiFamily
        font.pixelSize: 11
    }

    MarrowButton {
        id: remove

        objectName: "remove"
        focus: true
        x: parent.width - width - 14
        y: Math.round((parent.height - height) / 2)
        width: 22
        height: 22
        opacity: pressed ? 0.7 : 1
        focusRadius: 5
        onClicked: row.removed()

        Accessible.name: `Remove ${row.name} from queue`

        Keys.onTabPressed: row.keyboardLeft(1, Qt.TabFocusReason)
        Keys.onBacktabPressed: row.keyboardLeft(-1, Qt.BacktabFocusReason)
        Keys.onDownPressed: row.keyboardLeft(1, Qt.OtherFocusReason)
        Keys.onUpPressed: row.keyboardLeft(-1, Qt.OtherFocusReason)

        contentItem: Item {
            Symbol {
                objectName: "symbol"
                anchors.centerIn: parent
                name: "xmark"
                size: 10
                bold: true
                color: remove.hovered || remove.pressed ? Theme.ink : Theme.muted
            }
        }
    }
}
