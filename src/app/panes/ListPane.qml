// The frame of a list in place of the map: a title with a caption below it, then the rows, or a
// message if there are none. It may have a control beside the title, and something above the rows,
// such as column titles.
import QtQuick
import Tessaly.Controls

FocusScope {
    id: pane

    required property string title
    required property string caption
    // Empty for no message.
    required property string emptyText
    // The delegate must be a ListPaneRow.
    property alias model: list.model
    property alias delegate: list.delegate
    // The control beside the title, at the right edge.
    property alias beside: besidePlace.data
    property color captionColor: Theme.muted
    // One item between the caption and the rows; hidden while there are no rows.
    property alias aboveRows: aboveRowsPlace.data

    Accessible.role: Accessible.Pane
    Accessible.name: title

    Text {
        id: titleText

        objectName: "listTitle"
        x: 18
        y: 16
        width: besidePlace.x - 12 - x
        text: pane.title
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.ink
        font.family: Theme.uiFamily
        font.pixelSize: 16
        font.weight: Font.DemiBold

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Item {
        id: besidePlace

        objectName: "besideTitle"
        x: pane.width - 18 - width
        y: Math.round(titleText.y + (titleText.height - height) / 2)
        width: childrenRect.width
        height: childrenRect.height
    }

    Text {
        id: captionText

        objectName: "listCaption"
        x: 18
        y: titleText.y + titleText.height + 4
        width: pane.width - 2 * x
        text: pane.caption
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        color: pane.captionColor
        font.family: Theme.uiFamily
        font.pixelSize: 12
    }

    Item {
        id: body

        y: captionText.y + captionText.height + 12
        width: pane.width
        height: pane.height - y

        Text {
            objectName: "emptyMessage"
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 36)
            visible: list.count === 0 && text !== ""
            text: pane.emptyText
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 13
        }

        Item {
            id: aboveRowsPlace

            objectName: "aboveRows"
            width: parent.width
            height: list.count > 0 && children.length > 0 ? children[0].height : 0
            visible: list.count > 0
        }

        MarrowList {
            id: list

            objectName: "list"
            y: aboveRowsPlace.height
            width: parent.width
            height: parent.height - y
            focus: true
            visible: count > 0
            bottomMargin: 10

            Accessible.name: pane.title
        }
    }
}
