import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// The preview with its buttons, and beside it all pages of the job.
Item {
    id: control

    property alias folder: surface.folder
    property alias printedPages: surface.printedPages
    property alias waiting: surface.waiting
    property alias follows: surface.follows
    property alias page: surface.page
    property alias zoom: surface.zoom
    property alias turned: surface.turned
    readonly property alias pageCount: surface.pageCount
    readonly property alias isShown: surface.isShown
    readonly property alias shownZoom: surface.shownZoom

    function turnTo(number) { surface.turnTo(number) }
    function turnBy(step) { surface.turnBy(step) }
    function followAgain() { surface.followAgain() }
    function zoomIn() { surface.zoomIn() }
    function zoomOut() { surface.zoomOut() }

    readonly property bool hasPages: pageCount > 0
    readonly property bool isNarrow: width < 600

    Shortcut { sequences: ["PgUp"]; onActivated: surface.turnBy(-1) }
    Shortcut { sequences: ["PgDown"]; onActivated: surface.turnBy(1) }
    Shortcut { sequences: ["Home"]; onActivated: surface.turnTo(0) }
    Shortcut { sequences: ["End"]; onActivated: surface.turnTo(surface.pageCount - 1) }
    Shortcut { sequences: [StandardKey.ZoomIn, "+"]; onActivated: surface.zoomIn() }
    Shortcut { sequences: [StandardKey.ZoomOut, "-"]; onActivated: surface.zoomOut() }
    Shortcut { sequences: ["0"]; onActivated: surface.zoom = 0 }
    Shortcut { sequences: ["1"]; onActivated: surface.zoom = 1 }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        UiBar {
            Layout.fillWidth: true
            spacing: 4

            UiButton { objectName: "back"; text: "\u2039"; what: "Page back"; enabled: surface.mayTurnBack; onClicked: surface.turnBy(-1) }
            Text {
                objectName: "number"
                // That of the picture: while it follows, this stays until the next page is there.
                text: surface.shownPage >= 0 ? "Page " + (surface.shownPage + 1) + " of " + surface.shownPageCount
                    : control.hasPages ? "Page " + (surface.page + 1) + " of " + surface.pageCount : "No pages"
                color: "#202a33"
                font.pixelSize: 15
                horizontalAlignment: Text.AlignHCenter
                Layout.minimumWidth: control.isNarrow ? 90 : 120
            }
            UiButton { objectName: "next"; text: "\u203A"; what: "Page on"; enabled: surface.mayTurnOn; onClicked: surface.turnBy(1) }
            UiButton {
                objectName: "follow"
                text: "Follow"
                checked: surface.follows
                onClicked: surface.follows ? surface.follows = false : surface.followAgain()
            }
            Item { Layout.fillWidth: true }
            UiButton { objectName: "out"; text: "\u2212"; what: "Smaller"; onClicked: surface.zoomOut() }
            Text {
                objectName: "zoom"
                visible: !control.isNarrow
                text: Math.round(surface.shownZoom * 100) + " %"
                color: "#202a33"
                font.pixelSize: 15
                horizontalAlignment: Text.AlignHCenter
                Layout.minimumWidth: 52
            }
            UiButton { objectName: "in"; text: "+"; what: "Larger"; onClicked: surface.zoomIn() }
            UiButton { objectName: "fit"; visible: !control.isNarrow; text: "Fit"; checked: surface.zoom === 0; onClicked: surface.zoom = 0 }
            UiButton { objectName: "dots"; visible: !control.isNarrow; text: "Dots"; checked: surface.zoom === 1; onClicked: surface.zoomTo(1) }
            UiButton { objectName: "turn"; visible: !control.isNarrow; text: "Turn"; what: "Upside down"; checked: surface.turned; onClicked: surface.turned = !surface.turned }
            UiButton { objectName: "jobs"; text: "Jobs"; onClicked: jobs.show() }
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0

            PrintPreviewSurface {
                id: surface
                Layout.fillWidth: true
                Layout.fillHeight: true
                onFolderTold: strip.lookAgain()
            }
            PageStrip {
                id: strip
                objectName: "strip"
                Layout.fillHeight: true
                Layout.preferredWidth: 104
                Layout.margins: 4
                visible: control.width >= 600 && surface.pageCount > 1
                model: visible ? surface.pageCount : 0
                folder: surface.folder
                printedPages: surface.shownStem
                page: surface.page
                onChosen: number => surface.turnTo(number)
            }
        }
        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 28
            color: "#eceff1"
            RowLayout {
                anchors { fill: parent; leftMargin: 10; rightMargin: 10 }
                spacing: 16
                component Note: Text { color: "#58656f"; font.pixelSize: 14 }
                Note {
                    objectName: "status"
                    Layout.fillWidth: true
                    elide: Text.ElideRight
                    text: !TQTWSProcessorInterface.isPrinting ? TQTWSProcessorInterface.jobStatus || "Ready"
                        : (TQTWSProcessorInterface.jobStatus || "Waiting") + ": page " + (TQTWSProcessorInterface.printingPage + 1)
                          + (surface.folder !== TQTWSProcessorInterface.jobFolder ? " of another job"
                             : surface.jobName ? " of \u201C" + surface.jobName + "\u201D" : "")
                }
                Note {
                    objectName: "badBarcodes"
                    visible: surface.badBarcodes > 0
                    color: "#b71c1c"
                    text: surface.badBarcodes === 1 ? "The outlined barcode may not scan" : surface.badBarcodes + " outlined barcodes may not scan"
                }
                Note { objectName: "job"; text: surface.jobName; visible: text.length > 0 }
                Note { text: surface.dots.width > 0 ? surface.dots.width + " \u00D7 " + surface.dots.height + " dots" : "" }
            }
        }
    }

    JobsPopup {
        id: jobs
        parent: control
        printedPages: control.printedPages
        waiting: control.waiting
        onChosen: job => surface.showJob(job, false)
    }
}
