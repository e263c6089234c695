// What stands above the rows of the page of what can be won back, and scrolls with them: the
// banners, the snapshots, and the section of caches while it has no row.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

Column {
    id: top

    required property ListWinsState wins

    readonly property real room: width - leftPadding - rightPadding

    topPadding: 2
    leftPadding: 18
    rightPadding: 18
    // Without spacing, and a hidden part has no height: a column does not notice that a part is
    // hidden or shown while the whole page is hidden.

    WinBanner {
        objectName: "freedBanner"
        width: top.room
        text: top.wins.freedText
        tint: Theme.success
    }

    WinBanner {
        objectName: "errorBanner"
        width: top.room
        text: top.wins.errorText
        tint: Theme.error
    }

    Item {
        objectName: "snapshotRow"
        width: top.room
        height: top.wins.snapshotText !== "" ? fill.height + 8 : 0
        visible: top.wins.snapshotText !== ""

        RoundedPanel {
            id: fill

            width: parent.width
            height: 40
            radius: 8
            color: Theme.softFill
        }

        Symbol {
            id: clock

            x: 12
            anchors.verticalCenter: fill.verticalCenter
            name: "clock.arrow.circlepath"
            size: 13
            color: Theme.accent
        }

        Text {
            objectName: "snapshotText"
            x: 36
            width: thin.x - 12 - x
            anchors.verticalCenter: fill.verticalCenter
            text: top.wins.snapshotText
            elide: Text.ElideRight
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
        }

        MarrowPill {
            id: thin

            objectName: "thinSnapshots"
            x: parent.width - width - 8
            anchors.verticalCenter: fill.verticalCenter
            enabled: !top.wins.thinning
            opacity: !enabled ? 0.45 : pressed ? 0.8 : 1
            text: "Thin snapshots"
            active: false
            onClicked: top.wins.thin()

            Accessible.checkable: false

            KeyboardGoesOn {
                control: thin
            }
        }
    }

    Column {
        width: top.room
        height: top.wins.hasProbes ? 0 : implicitHeight
        visible: !top.wins.hasProbes
        topPadding: 8
        bottomPadding: 8
        spacing: 8

        WinSection {
            objectName: "emptyCachesTitle"
            width: parent.width
            text: "Caches & developer junk"
        }

        Text {
            objectName: "noCaches"
            width: parent.width
            text: "No known caches found."
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 12
        }
    }
}
