// A button that shows a pane.
import QtQuick
import Tessaly.Controls

MarrowPill {
    labelSize: 11
    labelWeight: Font.Medium
    tint: Theme.accent
}
