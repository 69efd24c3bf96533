import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

ApplicationWindow {
    width: 760
    height: 820
    minimumWidth: 640
    minimumHeight: 320
    visible: true
    title: "Print preview"

    PrintPreviewControl {
        objectName: "control"
        anchors.fill: parent
        printedPages: ({ job: PrintedPages.job, stem: PrintedPages.stem })
    }
}
