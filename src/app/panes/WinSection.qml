// The heading of a section of the page of what can be won back.
import QtQuick
import Tessaly.Controls

Text {
    textFormat: Text.PlainText
    elide: Text.ElideRight
    color: Theme.muted
    font.family: Theme.uiFamily
    font.pixelSize: 11
    font.weight: Font.DemiBold
    font.letterSpacing: 0.5

    Accessible.role: Accessible.Heading
    Accessible.name: text
}
