// The menu of an item of the map. Up and Down move through its buttons.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Overlays
import Tessaly.Window

QuestionPanel {
    id: menu

    required property NodeMenuState question
    required property NodeActions actions

    // Dismissing clears the node, so the action comes first.
    function answer(act) {
        act(menu.question.node)
        menu.question.dismiss()
    }

    panelWidth: 260
    shown: menu.question.shown
    onDismissed: menu.question.dismiss()

    Accessible.role: Accessible.PopupMenu
    Accessible.name: title.text

    Keys.onUpPressed: menu.step(false)
    Keys.onDownPressed: menu.step(true)

    Column {
        x: 16
        width: menu.panelWidth - 32
        topPadding: 16
        bottomPadding: 16
        spacing: 6

        Text {
            id: title

            objectName: "menuTitle"
            width: parent.width
            bottomPadding: 6
            horizontalAlignment: Text.AlignHCenter
            text: menu.question.title
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.Bold
        }

        MarrowSecondaryButton {
            objectName: "menuReveal"
            width: parent.width
            text: Wording.reveal
            onClicked: menu.answer(node => menu.actions.reveal(node))
        }

        MarrowSecondaryButton {
            objectName: "menuOpen"
            width: parent.width
            text: "Open"
            onClicked: menu.answer(node => menu.actions.open(node))
        }

        MarrowSecondaryButton {
            objectName: "menuQuickLook"
            width: parent.width
            text: "Quick Look"
            onClicked: menu.answer(node => menu.actions.quickLook(node))
        }

        MarrowSecondaryButton {
            objectName: "menuCopyPath"
            width: parent.width
            text: "Copy Path"
            onClicked: menu.answer(node => menu.actions.copyPath(node))
        }

        MarrowSecondaryButton {
            objectName: "menuTerminal"
            width: parent.width
            text: "Open in Terminal"
            onClicked: menu.answer(node => menu.actions.openTerminal(node))
        }

        MarrowSecondaryButton {
            objectName: "menuEditor"
            width: parent.width
            text: "Open in Editor"
            onClicked: menu.answer(node => menu.actions.openInEditor(node))
        }

        MarrowSecondaryButton {
            objectName: "menuQueue"
            width: parent.width
            text: "Add to Cleanup Queue"
            onClicked: menu.answer(node => menu.question.addToQueue(node))
        }

        MarrowSecondaryButton {
            objectName: "menuTrash"
            enabled: menu.question.canTrash
            width: parent.width
            text: "Move to Trash"
            labelColor: Theme.error
            // Closes the menu itself.
            onClicked: menu.question.trash(menu.question.node)
        }

        MarrowSecondaryButton {
            objectName: "menuCancel"
            width: parent.width
            text: "Cancel"
            labelWeight: Font.DemiBold
            onClicked: menu.question.dismiss()
        }
    }
}
