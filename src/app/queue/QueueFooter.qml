// The actions for the whole queue: clear it, zip the items and move them to the Trash, or only move
// them to the Trash.
import QtQuick
import Tessaly.Controls
import Tessaly.Queue

Item {
    id: footer

    required property CleanupQueueState queue

    // Shift Tab on the first button.
    signal keyboardLeft

    function takeKeyboard(reason) {
        clear.forceActiveFocus(reason)
    }

    implicitHeight: move.implicitHeight + 24

    MarrowSecondaryButton {
        id: clear

        objectName: "clear"
        x: 12
        y: 12
        height: move.height
        text: "Clear"
        onClicked: footer.queue.clear()

        Keys.onBacktabPressed: footer.keyboardLeft()
    }

    MarrowSecondaryButton {
        id: zip

        objectName: "zipThenTrash"
        enabled: footer.queue.canTrash
        x: clear.x + clear.width + 8
        y: 12
        height: move.height
        text: "Zip then Trash"
        onClicked: footer.queue.zipThenTrash()
    }

    MarrowPrimaryButton {
        id: move

        objectName: "moveToTrash"
        enabled: footer.queue.canTrash
        x: zip.x + zip.width + 8
        y: 12
        width: footer.width - 12 - x
        leftPadding: 8
        rightPadding: 8
        text: footer.queue.moveText
        onClicked: footer.queue.moveToTrash()

        // A text with many digits shrinks before it is cut off.
        contentItem: Text {
            objectName: "label"
            text: move.text
            textFormat: Text.PlainText
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 9
            color: move.labelColor
            font.family: Theme.uiFamily
            font.pixelSize: move.labelSize
            font.weight: move.labelWeight
            Accessible.ignored: true
        }
    }
}
