// The bloat filters, each with two switches: highlight its items on the map, leave them out of
// scans.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions

    spacing: 4

    Row {
        objectName: "devBloatHeader"
        spacing: 6

        Accessible.role: Accessible.Heading
        Accessible.name: title.text

        Symbol {
            objectName: "devBloatSymbol"
            y: Math.round((title.height - height) / 2)
            name: "chevron.left.forwardslash.chevron.right"
            size: 11
            color: Theme.accent2
        }

        Text {
            id: title

            objectName: "devBloatTitle"
            text: "Dev Bloat Filters"
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11
            font.letterSpacing: 0.6
            font.capitalization: Font.AllUppercase
        }
    }

    Text {
        objectName: "devBloatHint"
        width: parent.width
        text: "Toggle to highlight in treemap · slash to skip"
        wrapMode: Text.Wrap
        opacity: 0.75
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 10
    }

    Column {
        objectName: "filters"
        width: parent.width
        spacing: 2

        Repeater {
            model: section.actions.filters

            // qmllint disable unqualified
            RoundedPanel {
                id: row

                required property string filterId
                required property string name
                required property string symbolName
                required property bool highlighted
                required property bool skipped

                objectName: row.filterId
                width: section.width
                height: 25
                radius: 6
                color: row.highlighted ? Theme.softFill : "transparent"

                MarrowSwitch {
                    objectName: "highlight"
                    x: 6
                    y: 3
                    width: skip.x - 6 - x
                    height: 19
                    on: row.highlighted
                    text: row.name
                    symbol: row.symbolName
                    symbolSize: 11
                    symbolWidth: 14
                    symbolColor: row.highlighted ? Theme.accent : Theme.muted
                    labelSize: 12
                    labelColor: row.highlighted || row.skipped ? Theme.ink : Theme.muted
                    onClicked: section.actions.toggleFilter(row.filterId)
                }

                SidebarIconButton {
                    id: skip

                    objectName: "skip"
                    x: parent.width - width - 6
                    y: 3
                    symbol: row.skipped ? "eye.slash.fill" : "eye.slash"
                    symbolSize: 10
                    symbolColor: row.skipped ? Theme.warning : Qt.alpha(Theme.muted, 0.6)
                    help: row.skipped ? "Skipping on next scan" : "Skip this on next scan"
                    target: row.name
                    onClicked: section.actions.toggleSkip(row.filterId)

                    Accessible.checkable: true
                    Accessible.checked: row.skipped
                }
            }
            // qmllint enable unqualified
        }
    }
}
