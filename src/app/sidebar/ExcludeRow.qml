// A folder that scans leave out, and the button that lets it back in.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

// The list gives the keyboard to rows, and the row to its button.
FocusScope {
    id: row

    required property int index
    required property string name
    required property string place
    required property pathHandle path

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

    implicitHeight: remove.height + 6

    RoundedPanel {
        objectName: "excludeRow"
        anchors.fill: parent
        radius: 6
        color: Qt.rgba(1, 1, 1, 0.03)

        Text {
            objectName: "excludeName"
            x: 6
            y: Math.round((parent.height - height) / 2)
            width: remove.x - 6 - x
            text: row.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 12
        }

        SidebarIconButton {
            id: remove

            objectName: "removeExclude"
            x: parent.width - width - 6
            y: 3
            focus: true
            symbol: "xmark"
            symbolSize: 9
            symbolColor: Theme.muted
            padding: 4
            help: "Remove"
            target: row.place
            // The list leads Tab from row to row, since the next one need not be there yet.
            focusPolicy: Qt.ClickFocus
            onClicked: row.removed()

            Keys.onTabPressed: row.keyboardLeft(1, Qt.TabFocusReason)
            Keys.onBacktabPressed: row.keyboardLeft(-1, Qt.BacktabFocusReason)
        }
    }
}
