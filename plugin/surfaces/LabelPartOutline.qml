import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

// The label part, drawn to scale as large as it fits.
Item {
    id: outline

    readonly property real margin: 12
    readonly property real pixelsPerInch: Math.max(0, Math.min((width - 2 * margin) / TQTWSProcessorInterface.labelWidth,
                                                               (height - 2 * margin) / TQTWSProcessorInterface.labelHeight))
    implicitWidth: 240
    implicitHeight: 240

    Rectangle {
        objectName: "label"
        anchors.centerIn: parent
        width: TQTWSProcessorInterface.labelWidth * outline.pixelsPerInch
        height: TQTWSProcessorInterface.labelHeight * outline.pixelsPerInch
        radius: 4
        color: "white"
        border.color: "#909090"

        Label {
            anchors.centerIn: parent
            color: "#707070"
            text: TQTWSProcessorInterface.labelWidth + " \u00D7 " + TQTWSProcessorInterface.labelHeight + " in"
        }
    }
}
