// A button for any other action.
import Tessaly.Controls

MarrowActionButton {
    isPrimary: false
}
