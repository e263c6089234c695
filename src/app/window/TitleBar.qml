// The row at the top of the window, with space at its left for the window's buttons.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Window

Item {
    id: bar

    required property Navigation navigation
    required property Shown screens
    required property WindowState bars
    // The menu opens below it.
    property alias menuButton: openMenu

    signal menuAsked

    implicitHeight: 44

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 78
        anchors.rightMargin: 14
        spacing: 10

        Text {
            objectName: "name"
            text: "Tessaly"
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.Bold
        }

        Row {
            spacing: 5

            Symbol {
                objectName: "volumeSymbol"
                anchors.verticalCenter: parent.verticalCenter
                name: "externaldrive"
                size: 10
                color: Theme.accent
            }

            Text {
                objectName: "volumeName"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, 110)
                text: bar.bars.volumeName
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 1
                color: Theme.muted
                font.family: Theme.uiFamily
                font.pixelSize: 11
                font.weight: Font.Medium
            }
        }

        MarrowButton {
            id: back

            objectName: "back"
            visible: bar.bars.showsBackButton
            text: "Back"
            symbol: "chevron.left"
            labelSize: 11
            labelWeight: Font.Medium
            labelColor: Theme.accent
            leftPadding: 7
            rightPadding: 9
            topPadding: 4
            bottomPadding: 4
            opacity: pressed ? 0.75 : 1
            focusRadius: 5
            onClicked: bar.navigation.back()

            KeyboardGoesOn {
                control: back
            }

            background: RoundedPanel {
                objectName: "background"
                radius: 5
                color: Qt.alpha(Theme.accent, 0.12)
            }
        }

        Item {
            Layout.fillWidth: true
        }

        SearchField {
            objectName: "searchField"
            Layout.preferredWidth: 380
            onClicked: bar.screens.searchOpen = true
        }

        Item {
            Layout.fillWidth: true
        }

        Row {
            spacing: 6

            PaneButton {
                objectName: "showMap"
                text: "Map"
                symbol: "square.split.2x2"
                active: bar.bars.pane === WindowState.Map
                onClicked: bar.bars.pane = WindowState.Map
            }

            PaneButton {
                objectName: "showApps"
                text: "Apps"
                symbol: "square.grid.2x2"
                active: bar.bars.pane === WindowState.Apps
                onClicked: bar.bars.pane = WindowState.Apps
            }

            PaneButton {
                objectName: "showPulse"
                text: "Pulse"
                symbol: "waveform.path.ecg"
                active: bar.bars.pane === WindowState.Monitor
                onClicked: bar.bars.pane = WindowState.Monitor
            }
        }

        Rectangle {
            objectName: "rule"
            Layout.preferredWidth: 1
            Layout.preferredHeight: 16
            color: Theme.strongHairline
        }

        Row {
            spacing: 2

            OverlayButton {
                objectName: "openAssistant"
                symbol: "sparkles"
                Accessible.name: "Assistant"
                onClicked: bar.screens.aiOpen = true
            }

            OverlayButton {
                objectName: "openInbox"
                symbol: "text.viewfinder"
                Accessible.name: "Screenshot inbox"
                onClicked: bar.screens.ocrOpen = true
            }

            OverlayButton {
                id: openMenu

                objectName: "openMenu"
                symbol: "line.3.horizontal"
                // A click does not take the focus from a text field, which the menu's commands may
                // edit.
                focusPolicy: Qt.TabFocus
                Accessible.role: Accessible.ButtonMenu
                Accessible.name: "Menu"
                onClicked: bar.menuAsked()
            }
        }
    }
}
