// The page of what can be won back, in place of the map.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

FocusScope {
    id: page

    required property ListWinsState wins

    Accessible.role: Accessible.Pane
    Accessible.name: "List Wins"

    WinsHeader {
        id: header

        objectName: "winsHeader"
        width: page.width
        wins: page.wins
    }

    Column {
        id: spinner

        objectName: "winsSpinner"
        anchors.horizontalCenter: parent.horizontalCenter
        y: header.height + Math.round((page.height - header.height - height) / 2)
        visible: page.wins.loading
        spacing: 12

        ProgressRing {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 28
            height: 28
            strokeWidth: 3
            value: 0
            from: Theme.accent
            to: Theme.indigo

            NumberAnimation on turn {
                running: spinner.visible
                from: 0
                to: 1
                duration: 1400
                loops: Animation.Infinite
            }
        }

        Text {
            objectName: "winsAnalyzing"
            text: "Analyzing reclaimable space…"
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 13

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    // Disabled while it is hidden, so that the row with the focus gets it back afterwards.
    FocusScope {
        y: header.height
        width: page.width
        height: page.height - y
        focus: true
        enabled: !page.wins.loading
        visible: enabled

        MarrowList {
            id: list

            // Whether the top was in sight after the last scrolling.
            property bool isAtTop: true

            // What is above the rows grows and shrinks at its top, with its banners.
            function keepTop() {
                if (isAtTop)
                    positionViewAtBeginning()
            }

            objectName: "winsList"
            anchors.fill: parent
            focus: true
            bottomMargin: 10
            model: page.wins.rows
            onContentYChanged: isAtTop = contentY <= originY

            Accessible.name: "List Wins"

            // The linter does not know the type of Qt.callLater, which is called after the layout.
            // qmllint disable
            header: WinsTop {
                width: list.width
                wins: page.wins
                onHeightChanged: Qt.callLater(list.keepTop)
            }
            // qmllint enable

            // qmllint disable unqualified
            delegate: WinRow {
                id: row

                objectName: "winRow"
                moving: page.wins.moving
                emptying: page.wins.emptying
                onActivated: page.wins.showOnMap(row.path)
                onTicked: page.wins.toggle(row.path)
                onEmptyAsked: page.wins.emptyTrash()
                onMenuAsked: (place, byKeyboard) => menu.ask(row.path, row.mapToItem(page, place), byKeyboard)
            }
            // qmllint enable unqualified
        }
    }

    WinMenu {
        id: menu

        wins: page.wins
    }
}
