// The button of the thing to do next.
import Tessaly.Controls

MarrowActionButton {
    isPrimary: true
}
