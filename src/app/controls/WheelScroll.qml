// Moves the column or list that it stands in by the wheel. A view that the mouse does not pull takes no
// wheel by itself.
import QtQuick
import Tessaly.Controls

WheelHandler {
    id: wheel

    required property Flickable view
    // What the view stands in, and what scrolls on where the view is at its end; null for nothing.
    property Flickable around: null

    signal turned

    acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    onWheel: event => {
        wheel.turned()
        Scrolling.turn(wheel.view, wheel.around, event.pixelDelta.y, event.angleDelta.y)
    }
}
