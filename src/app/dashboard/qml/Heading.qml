import QtQuick

Label {
    font.weight: Font.DemiBold
    spoken: true
    Accessible.role: Accessible.Heading
}
