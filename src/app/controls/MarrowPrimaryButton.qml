// A button for the most likely next action.
import Tessaly.Controls

MarrowActionButton {
    isPrimary: true
}
