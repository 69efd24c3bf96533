import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import TCPrintEngine

// The jobs whose pages can be looked at, to choose one.
Popup {
    id: popup

    property var printedPages
    property var waiting: []
    readonly property var entries: waiting.map((job, at) => ({
            folder: job.folder, stem: job.folder === printedPages.job ? printedPages.stem : "", name: job.name, pages: job.pages,
            state: TQTWSProcessorInterface.isPrinting && job.folder === TQTWSProcessorInterface.jobFolder ? "prints" : "waits" }))
        .concat(TQTWSProcessorInterface.jobList.printed.filter(job => job.stem !== printedPages.stem || !waiting.some(other => other.folder === printedPages.job))
        .map(job => ({ folder: "", stem: job.stem, name: job.name, pages: job.pages, state: "printed" })))

    signal chosen(var job)

    function show() {
        TQTWSProcessorInterface.jobList.lookAtWaiting()
        TQTWSProcessorInterface.jobList.lookAtPrinted(printedPages.stem)
        open()
    }

    x: parent ? parent.width - width - 8 : 0
    y: 60
    width: Math.min(380, parent ? parent.width - 16 : 380)
    height: Math.min(Math.max(list.contentHeight, 44) + 16, parent ? parent.height - 72 : 300)
    padding: 8
    modal: true
    focus: true

    background: Rectangle {
        radius: 10
        color: "#ffffff"
        border.color: "#b8bec4"
    }
    T.Overlay.modal: Rectangle { color: "#30202a33" }

    Text {
        anchors.centerIn: parent
        visible: popup.entries.length === 0
        text: "No job has pages"
        color: "#58656f"
        font.pixelSize: 16
    }
    ListView {
        id: list
        objectName: "jobList"
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: popup.entries
        ScrollBar.vertical: ScrollBar {}
        delegate: AbstractButton {
            id: entry
            required property var modelData
            required property int index
            objectName: "job" + index
            width: list.width
            height: 48
            focusPolicy: Qt.NoFocus
            text: modelData.name
            onClicked: {
                popup.close()
                popup.chosen(modelData)
            }
            background: Rectangle {
                radius: 6
                color: entry.down ? "#cfdbe6" : "transparent"
            }
            contentItem: RowLayout {
                spacing: 8
                Text {
                    Layout.fillWidth: true
                    leftPadding: 8
                    text: entry.modelData.name
                    textFormat: Text.PlainText
                    color: "#202a33"
                    font.pixelSize: 16
                    elide: Text.ElideMiddle
                }
                Text {
                    text: entry.modelData.pages + (entry.modelData.pages === 1 ? " page" : " pages")
                    color: "#58656f"
                    font.pixelSize: 14
                }
                Text {
                    Layout.preferredWidth: 56
                    text: entry.modelData.state
                    color: entry.modelData.state === "prints" ? "#1769aa" : "#58656f"
                    font.pixelSize: 14
                }
            }
        }
    }
}
