// Lets the wheel scroll its column or list. A Flickable that ignores dragging with the mouse
// ignores the wheel, too.
import QtQuick
import Tessaly.Controls

WheelHandler {
    id: wheel

    required property Flickable view
    // The view around this one, which scrolls when this one is at its end; null for none.
    property Flickable around: null

    signal turned

    acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    onWheel: event => {
        wheel.turned()
        Scrolling.turn(wheel.view, wheel.around, event.pixelDelta.y, event.angleDelta.y)
    }
}
