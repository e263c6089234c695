// The result of an action on the page of what can be won back.
import QtQuick
import Tessaly.Controls

Item {
    id: banner

    // Empty for no banner.
    required property string text
    required property color tint

    visible: text !== ""
    // With the gap below it.
    height: text !== "" ? fill.height + 8 : 0

    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    RoundedPanel {
        id: fill

        objectName: "bannerFill"
        width: parent.width
        height: message.implicitHeight + 20
        radius: 8
        color: Qt.alpha(banner.tint, 0.12)
        outlineColor: Qt.alpha(banner.tint, 0.25)
        outlineWidth: 1
    }

    Text {
        id: message

        objectName: "bannerText"
        x: 12
        y: 10
        width: banner.width - 24
        text: banner.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: banner.tint
        font.family: Theme.uiFamily
        font.pixelSize: 12
        font.weight: Font.Medium
        Accessible.ignored: true
    }
}
