// A note about the content, such as how much of it is left out.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

Rectangle {
    id: bar

    required property PreviewState preview

    implicitHeight: 32
    visible: preview.notice !== ""
    color: Theme.bg2

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.hairline
    }

    Text {
        objectName: "noticeText"
        anchors.centerIn: parent
        width: Math.min(implicitWidth, bar.width - 32)
        text: bar.preview.notice
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
    }
}
