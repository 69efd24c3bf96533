import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

// The fields of the label part as a list.
ListView {
    clip: true
    model: TQTWSProcessorInterface.labelFields
    delegate: ItemDelegate {
        required property var modelData
        width: ListView.view.width
        text: modelData.name + ": " + modelData.value
    }
}
