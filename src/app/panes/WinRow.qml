// One item that can be won back, with a check box, or with the button that empties the Trash. The
// first row of a section or a category has its heading above it.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string section
    required property string category
    required property string title
    required property string note
    required property string sizeText
    required property bool caution
    required property bool trashAction
    required property bool picked
    required property bool tickable
    required property pathHandle path
    required property nodeHandle node
    // A batch moves to the Trash; the Trash is being emptied.
    required property bool moving
    required property bool emptying

    signal ticked
    signal emptyAsked

    height: headingHeight + 46
    CommandRow.node: node
    headingHeight: (section !== "" ? 30 : 0) + (category !== "" ? 24 : 0)

    heading: [
        WinSection {
            objectName: "sectionTitle"
            y: 10
            width: parent.width
            visible: text !== ""
            text: row.section
        },
        Text {
            objectName: "categoryTitle"
            y: (row.section !== "" ? 30 : 0) + 5
            width: parent.width
            visible: text !== ""
            text: row.category
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.secondary
            font.family: Theme.uiFamily
            font.pixelSize: 11

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
    ]

    content: [
        MarrowCheckBox {
            id: box

            objectName: "tickRow"
            x: -6
            y: Math.round((parent.height - height) / 2)
            visible: !row.trashAction
            enabled: row.tickable && !row.moving
            focusPolicy: row.isTabStop ? Qt.StrongFocus : Qt.ClickFocus
            on: row.picked
            onClicked: row.ticked()

            Accessible.name: `Select ${row.title}`
        },
        MarrowPill {
            id: empty

            objectName: "emptyTrashRow"
            y: Math.round((parent.height - height) / 2)
            visible: row.trashAction
            enabled: !row.moving && !row.emptying
            opacity: !enabled ? 0.45 : pressed ? 0.8 : 1
            focusPolicy: row.isTabStop ? Qt.StrongFocus : Qt.ClickFocus
            text: "Empty Trash"
            active: false
            onClicked: row.emptyAsked()

            Accessible.checkable: false
        },
        Item {
            id: texts

            readonly property real dimmed: row.tickable || row.trashAction ? 1 : 0.45

            x: row.trashAction ? empty.width + 12 : 28
            width: size.x - 14 - x
            height: parent.height
            opacity: dimmed
            Accessible.ignored: true

            Text {
                id: titleText

                objectName: "title"
                y: 6
                width: Math.min(implicitWidth, texts.width - (row.caution ? badge.width + 8 : 0))
                text: row.title
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                maximumLineCount: 1
                color: Theme.ink
                font.family: Theme.uiFamily
                font.pixelSize: 13
                Accessible.ignored: true
            }

            RoundedPanel {
                id: badge

                objectName: "cautionBadge"
                x: titleText.width + 8
                y: titleText.y + Math.round((titleText.height - height) / 2)
                width: badgeText.implicitWidth + 12
                height: 15
                visible: row.caution
                radius: height / 2
                color: Qt.alpha(Theme.warning, 0.16)

                Text {
                    id: badgeText

                    objectName: "cautionText"
                    anchors.centerIn: parent
                    text: "CAUTION"
                    color: Theme.warning
                    font.family: Theme.uiFamily
                    font.pixelSize: 9
                    font.weight: Font.Bold
                    Accessible.ignored: true
                }
            }

            Text {
                objectName: "note"
                y: 25
                width: parent.width
                text: row.note
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                maximumLineCount: 1
                color: Theme.muted
                font.family: Theme.uiFamily
                font.pixelSize: 11
                Accessible.ignored: true
            }
        },
        Text {
            id: size

            objectName: "size"
            x: parent.width - width
            width: 84
            height: parent.height
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            opacity: texts.dimmed
            text: row.sizeText
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 12
            font.weight: Font.Medium
            Accessible.ignored: true
        }
    ]
}
