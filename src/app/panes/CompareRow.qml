// An item in which two folders differ. It has no action.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string place
    required property string leftText
    required property string rightText
    required property string differenceText
    required property bool shrinks

    height: 28
    label: `${place}, left ${leftText}, right ${rightText}, ${differenceText}`
    isButton: false

    content: CompareColumns {
        width: parent.width
        height: parent.height
        place: row.place
        leftText: row.leftText
        rightText: row.rightText
        differenceText: row.differenceText
        differenceColor: row.shrinks ? Theme.success : Theme.warning
    }
}
