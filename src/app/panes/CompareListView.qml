// The list of the items in which the scanned folder and another one differ.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

ListPane {
    id: view

    required property CompareListState comparison

    title: "Folder compare"
    caption: view.comparison.caption
    emptyText: ""
    model: view.comparison.rows

    beside: MarrowPill {
        objectName: "chooseCompared"
        text: "Choose folder…"
        active: false
        onClicked: view.comparison.chooseFolder()

        Accessible.checkable: false
    }

    aboveRows: CompareColumns {
        objectName: "compareTitles"
        x: 18
        width: view.width - 36
        height: 24
        place: "Path"
        leftText: "Left"
        rightText: "Right"
        differenceText: ""
        textColor: Theme.muted
        differenceColor: Theme.muted
        weight: Font.Medium
    }

    // qmllint disable unqualified
    delegate: CompareRow {
        objectName: "compareRow"
    }
    // qmllint enable unqualified
}
