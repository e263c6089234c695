// The name of an item in a row of a list, with its path below.
import QtQuick
import Tessaly.Controls

Item {
    id: pair

    required property string name
    required property string place

    implicitHeight: 34
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
        objectName: "place"
        y: 19
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
