// The finished tree. It stays on screen during another scan, under a banner.
import QtQuick
import QtQuick.Layouts
import Tessaly.Map
import Tessaly.Model
import Tessaly.Panes

Item {
    id: screen

    required property ScanSession session
    required property NodeActions actions
    required property DiskMapState map

    readonly property FocusScope shownList: list.item as FocusScope
    readonly property bool listHasKeyboard: shownList !== null && shownList.activeFocus

    // When the map replaces a list that has the focus, the map takes the focus. The linter does not
    // know the type.
    // qmllint disable
    onListHasKeyboardChanged: {
        if (!listHasKeyboard && map.showsTreemap)
            Qt.callLater(goOnAtMap)
    }
    // qmllint enable

    function goOnAtMap() {
        const canvas = treemap.item as TreemapCanvas
        if (canvas !== null)
            canvas.takeKeyboard()
    }

    CanvasSwitch {
        id: canvasSwitch

        map: screen.map
        canvas: treemap.item as TreemapSurface
    }

    Component {
        id: aliasView

        // qmllint disable unqualified
        AliasListView {
            id: alias

            objectName: "aliasList"
            links: screen.map.aliasList(alias)
            actions: screen.actions
        }
        // qmllint enable unqualified
    }

    Component {
        id: cloneView

        // qmllint disable unqualified
        CloneListView {
            id: clone

            objectName: "cloneList"
            clones: screen.map.cloneList(clone)
            actions: screen.actions
        }
        // qmllint enable unqualified
    }

    Component {
        id: cloudView

        // qmllint disable unqualified
        CloudListView {
            id: cloud

            objectName: "cloudList"
            items: screen.map.cloudList(cloud)
            actions: screen.actions
        }
        // qmllint enable unqualified
    }

    Component {
        id: compareView

        // qmllint disable unqualified
        CompareListView {
            id: compare

            objectName: "compareList"
            comparison: screen.map.compareList(compare)
        }
        // qmllint enable unqualified
    }

    Component {
        id: duplicateView

        // qmllint disable unqualified
        DuplicateListView {
            id: duplicate

            objectName: "duplicateList"
            copies: screen.map.duplicateList(duplicate)
            actions: screen.actions
        }
        // qmllint enable unqualified
    }

    Component {
        id: grewView

        // qmllint disable unqualified
        GrewListView {
            id: grew

            objectName: "grewList"
            growth: screen.map.grewList(grew)
        }
        // qmllint enable unqualified
    }

    Component {
        id: historyView

        // qmllint disable unqualified
        HistoryListView {
            id: history

            objectName: "historyList"
            history: screen.map.historyList(history)
        }
        // qmllint enable unqualified
    }

    Component {
        id: largestView

        // qmllint disable unqualified
        LargestListView {
            id: largest

            objectName: "largestList"
            files: screen.map.largestList(largest)
            actions: screen.actions
        }
        // qmllint enable unqualified
    }

    Component {
        id: safeView

        // qmllint disable unqualified
        SafeListView {
            id: safe

            objectName: "safeList"
            files: screen.map.safeList(safe)
        }
        // qmllint enable unqualified
    }

    Component {
        id: winsView

        // qmllint disable unqualified
        ListWinsView {
            id: wins

            objectName: "winsPage"
            wins: screen.map.winsList(wins)
        }
        // qmllint enable unqualified
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ModeBar {
            id: modeBar

            objectName: "modeBar"
            Layout.fillWidth: true
            map: screen.map
            session: screen.session
        }

        TreemapHeader {
            objectName: "header"
            Layout.fillWidth: true
            visible: screen.map.showsTreemap
            map: screen.map
        }

        Loader {
            id: treemap

            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10
            Layout.bottomMargin: 10
            active: canvasSwitch.active
            visible: screen.map.showsTreemap
            // qmllint disable unqualified
            sourceComponent: TreemapCanvas {
                objectName: "canvas"
                map: screen.map.canvas
                actions: screen.actions
                node: screen.map.node
                onOpen: node => screen.map.open(node)
                onMenu: node => screen.map.askAbout(node)
            }
            // qmllint enable unqualified
        }

        Loader {
            id: list

            readonly property Component view: {
                switch (screen.map.modeKey) {
                case "aliases":
                    return aliasView
                case "clones":
                    return cloneView
                case "cloud":
                    return cloudView
                case "compare":
                    return compareView
                case "duplicates":
                    return duplicateView
                case "grew":
                    return grewView
                case "history":
                    return historyView
                case "largest":
                    return largestView
                case "list":
                    return winsView
                case "safe":
                    return safeView
                }
                return null
            }

            Layout.fillWidth: true
            Layout.fillHeight: true
            active: view !== null
            visible: active
            sourceComponent: view
        }
    }

    ScanningBanner {
        objectName: "banner"
        anchors.horizontalCenter: parent.horizontalCenter
        // Below the row of modes, which can be used during the scan.
        y: modeBar.height + 8
        visible: screen.map.rescanning
        run: screen.session.run
        map: screen.map
    }
}
