import QtQuick
import QtQuick.Controls.Basic

// The preview alone, in a window of a desk.
ApplicationWindow {
    property url keyboard

    width: 760
    height: 820
    minimumWidth: 760
    minimumHeight: 320
    visible: true
    title: "Print preview"

    PrintPreviewControl {
        objectName: "control"
        anchors.fill: parent
    }
}
