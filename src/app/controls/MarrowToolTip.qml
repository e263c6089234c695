// A short description of a control, above it, while the pointer rests on it.
import QtQuick
import QtQuick.Templates as T
import Tessaly.Controls

T.ToolTip {
    id: tip

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: -implicitHeight - 5
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    margins: 6
    leftPadding: 8
    rightPadding: 8
    topPadding: 4
    bottomPadding: 4
    delay: 600
    closePolicy: T.Popup.NoAutoClose

    contentItem: Text {
        objectName: "tipText"
        text: tip.text
        textFormat: Text.PlainText
        color: Theme.secondary
        font.family: Theme.uiFamily
        font.pixelSize: 11
    }

    background: RoundedPanel {
        radius: 6
        color: Theme.bg2
        outlineColor: Theme.panelOutline
        outlineWidth: 1
        shadowColor: Theme.floatShadow
        shadowRadius: 6
        shadowOffset: 2
    }
}
