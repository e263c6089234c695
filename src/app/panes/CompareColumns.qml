// The four columns of a comparison: a path, two sizes and their difference.
import QtQuick
import Tessaly.Controls

Item {
    id: columns

    required property string place
    required property string leftText
    required property string rightText
    required property string differenceText
    property color textColor: Theme.ink
    required property color differenceColor
    property int weight: Font.Normal

    component Column: Text {
        width: 80
        height: parent.height
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        font.family: Theme.uiFamily
        font.pixelSize: 11
        Accessible.ignored: true
    }

    Column {
        objectName: "place"
        width: left.x - 14
        horizontalAlignment: Text.AlignLeft
        text: columns.place
        color: columns.textColor
        font.weight: columns.weight
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
    }

    Column {
        id: left

        objectName: "left"
        x: right.x - width
        text: columns.leftText
        color: columns.textColor
        font.weight: columns.weight
    }

    Column {
        id: right

        objectName: "right"
        x: difference.x - width
        text: columns.rightText
        color: columns.textColor
        font.weight: columns.weight
    }

    Column {
        id: difference

        objectName: "difference"
        x: columns.width - width
        text: columns.differenceText
        color: columns.differenceColor
        font.weight: columns.weight
    }
}
