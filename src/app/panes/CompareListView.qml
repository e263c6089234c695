// The list of the items in which the scanned folder and another one differ.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

ListPane {
    id: view

    required property CompareListState comparison

    title: "Folder compare"
    caption: view.comparison.caption
    emptyText: view.comparison.progress
    model: view.comparison.rows

    // While another folder is compared, the rows are still those of the one before.
    beside: [
        Text {
            id: progress

            objectName: "compareProgress"
            visible: text !== ""
            width: Math.min(implicitWidth, view.width / 2)
            height: choose.height
            verticalAlignment: Text.AlignVCenter
            text: view.comparison.hasRows ? view.comparison.progress : ""
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 12
        },
        MarrowPill {
            id: choose

            objectName: "chooseCompared"
            x: progress.text !== "" ? progress.width + 12 : 0
            text: "Choose folder…"
            active: false
            onClicked: view.comparison.chooseFolder()

            Accessible.checkable: false
        }
    ]

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
