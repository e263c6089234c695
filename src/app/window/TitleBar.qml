// The row at the top of the window. It begins to the right of where the window's own buttons stand.
import QtQuick
import QtQuick.Layouts
import Tessaly.Controls
import Tessaly.Model
import Tessaly.Window

Item {
    id: bar

    required property ScanSession session
    required property WindowState bars

    implicitHeight: 44

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 78
        anchors.rightMargin: 14
        spacing: 12

        Text {
            objectName: "name"
            text: "Tessaly"
            color: Theme.ink
            font.family: Theme.uiFamily
            font.pixelSize: 13
            font.weight: Font.Bold
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
            onClicked: bar.session.back()

            background: RoundedPanel {
                objectName: "background"
                radius: 5
                color: Qt.alpha(Theme.accent, 0.12)
            }
        }

        Item {
            Layout.fillWidth: true
        }
    }
}
