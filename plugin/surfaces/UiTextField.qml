import QtQuick
import QtQuick.Controls.Basic

// A line to type into, for a finger.
TextField {
    id: field

    property bool isFaulty: false
    property bool isDoubtful: false

    implicitHeight: 44
    font.pixelSize: 18
    color: "#202a33"
    placeholderTextColor: "#7a858e"
    selectByMouse: true
    leftPadding: 10
    rightPadding: 10
    background: Rectangle {
        radius: 6
        color: field.enabled ? "#ffffff" : "#eceff1"
        border.width: field.activeFocus || field.isDoubtful ? 2 : 1
        border.color: field.isFaulty ? "#b3261e" : field.isDoubtful ? "#e68a00" : field.activeFocus ? "#1769aa" : "#b8bec4"
    }
}
