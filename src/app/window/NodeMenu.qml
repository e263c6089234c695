// Asks what to do with one item. Up and Down go from answer to answer.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Window

ModalLayer {
    id: menu

    required property NodeMenuState question
    required property NodeActions actions

    // The node is the question's own, and goes with it.
    function answer(act) {
        act(menu.question.node)
        menu.question.dismiss()
    }

    panelWidth: 260
    shown: menu.question.shown
    onDismissed: menu.question.dismiss()
    onShownChanged: {
        if (shown)
            reveal.forceActiveFocus(reason)
    }

    Accessible.role: Accessible.PopupMenu
    Accessible.name: title.text

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

        NodeMenuButton {
            id: reveal

            objectName: "menuReveal"
            text: Wording.reveal
            above: cancel
            below: open
            onClicked: menu.answer(node => menu.actions.reveal(node))
        }

        NodeMenuButton {
            id: open

            objectName: "menuOpen"
            text: "Open"
            above: reveal
            below: look
            onClicked: menu.answer(node => menu.actions.open(node))
        }

        NodeMenuButton {
            id: look

            objectName: "menuQuickLook"
            text: "Quick Look"
            above: open
            below: copy
            onClicked: menu.answer(node => menu.actions.quickLook(node))
        }

        NodeMenuButton {
            id: copy

            objectName: "menuCopyPath"
            text: "Copy Path"
            above: look
            below: terminal
            onClicked: menu.answer(node => menu.actions.copyPath(node))
        }

        NodeMenuButton {
            id: terminal

            objectName: "menuTerminal"
            text: "Open in Terminal"
            above: copy
            below: editor
            onClicked: menu.answer(node => menu.actions.openTerminal(node))
        }

        NodeMenuButton {
            id: editor

            objectName: "menuEditor"
            text: "Open in Editor"
            above: terminal
            below: queue
            onClicked: menu.answer(node => menu.actions.openInEditor(node))
        }

        NodeMenuButton {
            id: queue

            objectName: "menuQueue"
            text: "Add to Cleanup Queue"
            above: editor
            below: trash
            onClicked: menu.answer(node => menu.question.addToQueue(node))
        }

        NodeMenuButton {
            id: trash

            objectName: "menuTrash"
            text: "Move to Trash"
            labelColor: Theme.error
            above: queue
            below: cancel
            // Puts the question away by itself.
            onClicked: menu.question.trash(menu.question.node)
        }

        NodeMenuButton {
            id: cancel

            objectName: "menuCancel"
            text: "Cancel"
            labelWeight: Font.DemiBold
            above: trash
            below: reveal
            onClicked: menu.question.dismiss()
        }
    }
}
