// The folders that scans leave out.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions
    // The scroll area around the section.
    required property MarrowScrollArea area

    spacing: 3

    Item {
        width: parent.width
        height: add.height + 2

        Text {
            objectName: "excludedTitle"
            anchors.verticalCenter: parent.verticalCenter
            text: "Excluded"
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        SidebarIconButton {
            id: add

            objectName: "addExclude"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "plus"
            symbolSize: 10
            symbolColor: Theme.accent
            help: "Exclude a folder from scans"
            onClicked: section.actions.session.choices.addExclude()

            background: RoundedPanel {
                objectName: "background"
                radius: 4
                color: Theme.buttonFill
            }
        }
    }

    Text {
        objectName: "noExcludes"
        visible: section.actions.excludes.count === 0
        text: "No folders excluded"
        opacity: 0.8
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
    }

    // Tab enters the list here from above, and Shift Tab from below.
    Item {
        id: above

        activeFocusOnTab: list.count > 0
        Accessible.ignored: true
        onActiveFocusChanged: {
            if (activeFocus)
                list.keyboardTo(0, Qt.TabFocusReason)
        }
    }

    ExcludeList {
        id: list

        objectName: "excludes"
        width: parent.width
        visible: count > 0
        actions: section.actions
        around: section.area
        model: section.actions.excludes
        onKeyboardLeft: (steps, reason) => {
            const next = steps > 0 ? below.nextItemInFocusChain() : above.nextItemInFocusChain(false)
            next.forceActiveFocus(reason)
        }
    }

    Item {
        id: below

        activeFocusOnTab: list.count > 0
        Accessible.ignored: true
        onActiveFocusChanged: {
            if (activeFocus)
                list.keyboardTo(list.count - 1, Qt.BacktabFocusReason)
        }
    }
}
