import QtQuick

// The desk around the label that an editor works on.
Rectangle {
    color: "#d8d8d8"
    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight

    EditorLabelSurface {
        id: label
        anchors.fill: parent
    }
}
