// The kinds of files and their colours on the map.
import QtQuick
import Tessaly.Controls
import Tessaly.Sidebar

Column {
    id: legend

    spacing: 3

    SectionHeader {
        objectName: "legendHeader"
        title: "File Kinds"
        symbol: "circle.grid.2x2"
    }

    RoundedPanel {
        objectName: "legendCard"
        width: legend.width
        height: dots.height + 16
        radius: 8
        color: Theme.faintFill

        Grid {
            id: dots

            readonly property real cell: width / columns

            objectName: "legendDots"
            x: 8
            y: 8
            width: parent.width - 16
            columns: 3
            rowSpacing: 6

            LegendDot {
                width: dots.cell
                dotColor: Theme.video
                label: "Video"
            }

            LegendDot {
                width: dots.cell
                dotColor: Theme.image
                label: "Image"
            }

            LegendDot {
                width: dots.cell
                dotColor: Theme.document
                label: "Doc"
            }

            LegendDot {
                width: dots.cell
                dotColor: Theme.developer
                label: "Dev"
            }

            LegendDot {
                width: dots.cell
                dotColor: Theme.archive
                label: "Archive"
            }

            LegendDot {
                width: dots.cell
                dotColor: Theme.other
                label: "Other"
            }
        }
    }
}
