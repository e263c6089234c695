// The folders that scans leave out.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Sidebar

Column {
    id: section

    required property SidebarState actions

    spacing: 3

    PathListModel {
        id: folders

        session: section.actions.session
        list: PathListModel.Excludes
    }

    Item {
        width: parent.width
        height: add.height + 2

        Text {
            objectName: "excludedTitle"
            anchors.verticalCenter: parent.verticalCenter
            text: "Excluded"
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        SidebarIconButton {
            id: add

            objectName: "addExclude"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "plus"
            symbolSize: 10
            symbolColor: Theme.accent
            help: "Exclude a folder from scans"
            onClicked: section.actions.session.addExclude()

            background: RoundedPanel {
                objectName: "background"
                radius: 4
                color: Qt.rgba(1, 1, 1, 0.06)
            }
        }
    }

    Text {
        objectName: "noExcludes"
        visible: folders.count === 0
        text: "No folders excluded"
        opacity: 0.8
        color: Theme.muted
        font.family: Theme.uiFamily
        font.pixelSize: 11
    }

    Repeater {
        model: folders

        // The names of this file reach into the component, though the linter cannot know.
        // qmllint disable unqualified
        RoundedPanel {
            id: row

            required property string name
            required property string place
            required property pathHandle path

            objectName: "excludeRow"
            width: section.width
            height: remove.height + 6
            radius: 6
            color: Qt.rgba(1, 1, 1, 0.03)

            Text {
                objectName: "excludeName"
                x: 6
                y: Math.round((parent.height - height) / 2)
                width: remove.x - 6 - x
                text: row.name
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 1
                color: Theme.ink
                font.family: Theme.uiFamily
                font.pixelSize: 12
            }

            SidebarIconButton {
                id: remove

                objectName: "removeExclude"
                x: parent.width - width - 6
                y: 3
                symbol: "xmark"
                symbolSize: 9
                symbolColor: Theme.muted
                padding: 4
                help: "Remove"
                target: row.place
                onClicked: {
                    // The row goes, and the keyboard goes on to what comes after it.
                    if (activeFocus)
                        nextItemInFocusChain().forceActiveFocus(focusReason)
                    section.actions.removeExclude(row.path)
                }
            }
        }
        // qmllint enable unqualified
    }
}
