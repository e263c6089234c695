// A folder that scans leave out, with the button that removes it from the list.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

MarrowListRow {
    id: row

    required property string name
    required property string place
    required property pathHandle path

    signal removed

    control: remove
    implicitHeight: remove.height + 6

    RoundedPanel {
        objectName: "excludeRow"
        anchors.fill: parent
        radius: 6
        color: Theme.chipFill

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
            // The list handles Tab, since the next row may not be built yet.
            focusPolicy: Qt.ClickFocus
            onClicked: row.removed()
        }
    }
}
