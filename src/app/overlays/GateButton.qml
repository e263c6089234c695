// A button of the gate. It keeps its size when it becomes primary or secondary.
import Tessaly.Controls

MarrowActionButton {
    isPrimary: false
    width: 150
    height: 34
}
