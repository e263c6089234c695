// Moves the column or list that it stands in by the wheel, at once and by half the angle: a notch of a
// mouse is 60 points. A view that the mouse does not pull takes no wheel by itself.
import QtQuick

WheelHandler {
    id: wheel

    required property Flickable view

    signal turned

    acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    onWheel: event => {
        const distance = event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 2
        const last = Math.max(0, wheel.view.contentHeight - wheel.view.height)
        wheel.turned()
        wheel.view.contentY = wheel.view.originY + Math.max(0, Math.min(wheel.view.contentY - wheel.view.originY - distance, last))
    }
}
