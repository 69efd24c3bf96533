import QtQuick
import QtQuick.Controls.Basic

// The printer's screen as a window of its size.
ApplicationWindow {
    id: window

    // Of the keyboard, if the machine has one.
    property url keyboard

    width: 800
    height: 480
    visible: true
    title: "Label printer"

    PrinterScreen {
        objectName: "screen"
        anchors.fill: parent
        // What is typed into stays in sight.
        anchors.bottomMargin: panel.item ? panel.item.covered : 0
    }
    Loader {
        id: panel
        anchors.fill: parent
        source: window.keyboard
        z: 10
    }
}
