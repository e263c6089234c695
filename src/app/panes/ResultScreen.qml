// The finished tree. While it is scanned anew it stays where it is, under a banner.
import QtQuick
import QtQuick.Layouts
import Tessaly.Map
import Tessaly.Model
import Tessaly.Overlays
import Tessaly.Panes

Item {
    id: screen

    required property ScanSession session
    required property NodeActions actions
    required property DiskMapState map

    CanvasSwitch {
        id: canvasSwitch

        map: screen.map
        canvas: treemap.item as TreemapSurface
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
            // The names of this file reach into the component, though the linter cannot know.
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

        PlainFrame {
            objectName: "modeFrame"
            Layout.fillWidth: true
            Layout.fillHeight: true
            title: screen.map.modeTitle
            shown: !screen.map.showsTreemap
            onClosed: screen.map.showTreemap()
        }
    }

    ScanningBanner {
        objectName: "banner"
        anchors.horizontalCenter: parent.horizontalCenter
        // The modes can be chosen meanwhile.
        y: modeBar.height + 8
        visible: screen.map.rescanning
        run: screen.session.run
        map: screen.map
    }
}
