// The gate, which covers the whole window until the program may read the whole disk or the user
// skips it: what is missing, how to grant it, and the buttons. Nothing else closes it.
import QtQuick
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Overlays

InputShield {
    id: gate

    required property AccessGateActions actions

    shown: actions.access.showGate

    Accessible.role: Accessible.Dialog
    Accessible.name: heading.text
    Accessible.description: caption.text

    // Blocks the shortcuts of the window except those that close the window or quit the program.
    Keys.onShortcutOverride: event => {
        const leaves = event.key === Qt.Key_Q || event.key === Qt.Key_W
        event.accepted = !(leaves && event.modifiers === Qt.ControlModifier)
    }

    Timer {
        objectName: "refreshTimer"
        interval: 1500
        repeat: true
        running: gate.shown
        onTriggered: gate.actions.refresh()
    }

    Rectangle {
        objectName: "backdrop"
        anchors.fill: parent
        color: Theme.bg
    }

    Column {
        objectName: "column"
        anchors.centerIn: parent
        width: Math.min(620, gate.width - 80)

        Symbol {
            objectName: "emblem"
            anchors.horizontalCenter: parent.horizontalCenter
            // A whole number of points, so that the items below start on a pixel.
            height: Math.ceil(implicitHeight)
            name: "externaldrive.fill"
            size: 44
            color: Theme.accent
        }

        Item {
            width: 1
            height: 16
        }

        Text {
            id: heading

            objectName: "heading"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            height: Math.ceil(implicitHeight)
            text: Wording.gateHeading
            wrapMode: Text.Wrap
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 22
            font.weight: Font.Bold
        }

        Item {
            width: 1
            height: 10
        }

        Text {
            id: caption

            objectName: "caption"
            x: (parent.width - width) / 2
            width: Math.min(580, parent.width)
            height: Math.ceil(implicitHeight)
            horizontalAlignment: Text.AlignHCenter
            text: Wording.gateCaption
            wrapMode: Text.Wrap
            lineHeight: 1.25
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 13
        }

        Item {
            width: 1
            height: 22
        }

        MarrowCard {
            objectName: "card"
            width: parent.width
            radius: 12
            strokeOpacity: 0.08
            padding: 18

            contentItem: Column {
                spacing: 14

                AccessStep {
                    objectName: "step1"
                    width: parent.width
                    number: 1
                    text: Wording.gateSteps[0]
                }

                AccessStep {
                    objectName: "step2"
                    width: parent.width
                    number: 2
                    text: Wording.gateSteps[1]
                }

                AccessStep {
                    objectName: "step3"
                    width: parent.width
                    number: 3
                    text: Wording.gateSteps[2]
                }
            }
        }

        Item {
            width: 1
            height: 24
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            GateButton {
                objectName: "grant"
                text: Wording.gateGrant
                isPrimary: !gate.actions.hasBegun
                onClicked: gate.actions.grant()
            }

            GateButton {
                objectName: "relaunch"
                text: "Quit & Reopen"
                isPrimary: gate.actions.hasBegun
                onClicked: gate.actions.relaunch()
            }

            GateButton {
                objectName: "check"
                text: "Check again"
                onClicked: gate.actions.refresh()
            }
        }

        Item {
            width: 1
            height: 16
        }

        MarrowButton {
            objectName: "skip"
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Not now — scan a folder"
            labelSize: 12
            labelColor: hovered || pressed ? Theme.ink : Theme.secondary
            leftPadding: 10
            rightPadding: 10
            topPadding: 6
            bottomPadding: 6
            opacity: pressed ? 0.75 : 1
            focusRadius: 6
            onClicked: gate.actions.skip()
        }

        Item {
            width: 1
            height: 10
        }

        Text {
            objectName: "note"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            height: Math.ceil(implicitHeight)
            text: Wording.gateNote
            wrapMode: Text.Wrap
            color: Theme.muted
            font.family: Theme.uiFamily
            font.pixelSize: 11
        }
    }
}
