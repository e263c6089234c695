// The button of another thing that may be done.
import Tessaly.Controls

MarrowActionButton {
    isPrimary: false
}
