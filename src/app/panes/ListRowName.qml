// The name of an item in a row of a list, with its path below, and between them a line about it.
import QtQuick
import Tessaly.Controls

Item {
    id: pair

    required property string name
    required property string place
    // Empty for no such line.
    property string detail: ""

    implicitHeight: placeText.y + 15
    Accessible.ignored: true

    Text {
        objectName: "name"
        width: parent.width
        text: pair.name
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        color: Theme.ink
        font.family: Theme.uiFamily
        font.pixelSize: 13
        Accessible.ignored: true
    }

    Text {
        objectName: "detail"
        y: 19
        width: parent.width
        visible: text !== ""
        text: pair.detail
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
        Accessible.ignored: true
    }

    Text {
        id: placeText

        objectName: "place"
        y: pair.detail !== "" ? 35 : 19
        width: parent.width
        text: pair.place
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
        Accessible.ignored: true
    }
}
