// The latest failure, in a row that takes only its height from the content. It stays until it is
// dismissed; then an earlier failure that was not dismissed is shown.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Window

Rectangle {
    id: line

    required property FailureState failure
    required property Messages messages

    implicitHeight: Math.max(words.height, close.height) + 12
    visible: line.failure.shown
    color: Qt.alpha(Theme.warning, 0.14)

    Accessible.role: Accessible.AlertMessage
    Accessible.name: words.text
    Accessible.description: line.failure.earlier

    Symbol {
        id: sign

        objectName: "failureSymbol"
        x: 14
        y: Math.round((line.height - height) / 2)
        name: "exclamationmark.triangle.fill"
        size: 13
        color: Theme.warning
    }

    Text {
        id: words

        objectName: "failure"
        x: sign.x + sign.width + 10
        y: Math.round((line.height - height) / 2)
        width: (count.visible ? count.x : close.x) - 12 - x
        text: line.failure.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 5
        color: Theme.ink
        font.family: Theme.uiFamily
        font.pixelSize: 12
        font.weight: Font.Medium
        Accessible.ignored: true
    }

    Text {
        id: count

        objectName: "earlierFailures"
        x: close.x - 8 - width
        y: Math.round((line.height - height) / 2)
        visible: text !== ""
        text: line.failure.earlier
        textFormat: Text.PlainText
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
        Accessible.ignored: true
    }

    MarrowButton {
        id: close

        objectName: "dismissFailure"
        x: line.width - width - 14
        y: Math.round((line.height - height) / 2)
        symbol: "xmark"
        symbolSize: 10
        symbolColor: hovered ? Theme.ink : Theme.muted
        padding: 6
        opacity: pressed ? 0.7 : 1
        focusRadius: 5
        // A click does not move the keyboard focus.
        focusPolicy: Qt.TabFocus
        onClicked: {
            // Dismissing hides the line, so the focus moves on first.
            if (activeFocus && line.failure.earlier === "")
                nextItemInFocusChain().forceActiveFocus(focusReason)
            line.messages.dismissFailure()
        }

        Accessible.name: "Dismiss"
        Accessible.description: words.text
    }

    Rectangle {
        objectName: "rule"
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Qt.alpha(Theme.warning, 0.3)
    }
}
