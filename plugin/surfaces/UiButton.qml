import QtQuick
import QtQuick.Controls.Basic

// A button for a finger: at least 44 pixels each way. Highlighted it is what the surface is for, or switched on.
AbstractButton {
    id: button

    property bool highlighted: false
    property color accent: "#1769aa"
    // What it does, where its text is a sign.
    property string what

    implicitWidth: Math.max(44, label.implicitWidth + 24)
    implicitHeight: 44
    focusPolicy: Qt.NoFocus
    opacity: enabled ? 1 : 0.4
    Accessible.name: what || text

    background: Rectangle {
        radius: 6
        color: button.highlighted ? (button.down ? Qt.darker(button.accent, 1.2) : button.accent)
             : button.down || button.checked ? "#cfdbe6" : "#ffffff"
        border.color: button.highlighted ? button.accent : button.checked ? button.accent : "#b8bec4"
    }
    contentItem: Text {
        id: label
        text: button.text
        color: button.highlighted ? "#ffffff" : "#202a33"
        font.pixelSize: 16
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
}
