// One answer of the node menu, with the ones above and below it.
import QtQuick
import Tessaly.Controls

MarrowSecondaryButton {
    required property Item above
    required property Item below

    width: parent.width
    KeyNavigation.up: above
    KeyNavigation.down: below
    KeyNavigation.tab: below
    KeyNavigation.backtab: above
}
