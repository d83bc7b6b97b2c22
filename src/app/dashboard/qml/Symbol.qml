import QtQuick
import QtQuick.Window

Image {
    property string name
    property color color: "transparent" // as drawn
    property int size: 18

    width: size; height: size
    sourceSize: Qt.size(size * Screen.devicePixelRatio, size * Screen.devicePixelRatio)
    source: name ? "image://symbol/" + name + (color.a > 0 ? "/" + color.toString().slice(1) : "") : ""
    Accessible.ignored: true
}
