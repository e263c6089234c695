// Brings a pane to the front.
import QtQuick
import Tessaly.Controls

MarrowPill {
    labelSize: 11
    labelWeight: Font.Medium
    tint: Theme.accent
}
