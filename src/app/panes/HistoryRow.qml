// A scan of the history: its time, and its size as a bar and in words. It has no action.
import QtQuick
import Tessaly.Controls
import Tessaly.Panes

ListPaneRow {
    id: row

    required property string timeText
    required property string sizeText
    required property real share

    height: 26
    label: `${timeText}, ${sizeText}`
    isButton: false

    content: [
        Text {
            id: time

            objectName: "time"
            width: 118
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            text: row.timeText
            color: Theme.secondary
            font.family: Theme.monoFamily
            font.pixelSize: 11
            Accessible.ignored: true
        },
        RoundedPanel {
            id: track

            objectName: "track"
            x: time.width
            y: Math.round((parent.height - height) / 2)
            width: size.x - x
            height: 10
            radius: 5
            color: Theme.softFill
            Accessible.ignored: true

            RoundedPanel {
                objectName: "bar"
                width: Math.max(4, track.width * row.share)
                height: 10
                radius: 5
                color: Theme.accent
            }
        },
        Text {
            id: size

            objectName: "size"
            x: parent.width - width
            width: 72
            height: parent.height
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            text: row.sizeText
            color: Theme.ink
            font.family: Theme.monoFamily
            font.pixelSize: 12
            font.weight: Font.Medium
            Accessible.ignored: true
        }
    ]
}
