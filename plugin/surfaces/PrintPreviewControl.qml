import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// The preview with its buttons.
Item {
    id: control

    property alias folder: surface.folder
    property alias printedPages: surface.printedPages
    property alias follows: surface.follows
    property alias page: surface.page
    property alias zoom: surface.zoom
    readonly property alias pageCount: surface.pageCount
    readonly property alias isShown: surface.isShown
    readonly property alias shownZoom: surface.shownZoom

    component Button: ToolButton {
        focusPolicy: Qt.NoFocus
        implicitHeight: 32
    }
    component Separator: ToolSeparator { implicitHeight: 32 }

    function turnTo(number) { surface.turnTo(number) }
    function turnBy(step) { surface.turnBy(step) }
    function followAgain() { surface.followAgain() }
    function zoomIn() { surface.zoomIn() }
    function zoomOut() { surface.zoomOut() }

    readonly property bool hasPages: pageCount > 0

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

        ToolBar {
            Layout.fillWidth: true
            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 6
                anchors.rightMargin: 6
                spacing: 2

                Button { text: "First"; enabled: control.hasPages && surface.page > 0; onClicked: surface.turnTo(0) }
                Button { text: "Back"; enabled: surface.mayTurnBack; onClicked: surface.turnBy(-1) }
                Label {
                    objectName: "number"
                    // That of the picture: while it follows, this stays until the next page is there.
                    text: surface.shownPage >= 0 ? "Page " + (surface.shownPage + 1) + " of " + surface.shownPageCount
                        : control.hasPages ? "Page " + (surface.page + 1) + " of " + surface.pageCount : "No pages"
                    horizontalAlignment: Text.AlignHCenter
                    Layout.minimumWidth: 120
                }
                Button { text: "Next"; enabled: surface.mayTurnOn; onClicked: surface.turnBy(1) }
                Button { text: "Last"; enabled: surface.page < surface.pageCount - 1; onClicked: surface.turnTo(surface.pageCount - 1) }
                Button {
                    text: "Follow"
                    highlighted: surface.follows
                    onClicked: surface.follows ? surface.follows = false : surface.followAgain()
                }
                Separator {}
                Button { text: "\u2212"; onClicked: surface.zoomOut() }
                Label {
                    text: Math.round(surface.shownZoom * 100) + " %"
                    horizontalAlignment: Text.AlignHCenter
                    Layout.minimumWidth: 52
                }
                Button { text: "+"; onClicked: surface.zoomIn() }
                Button { text: "Fit"; highlighted: surface.zoom === 0; onClicked: surface.zoom = 0 }
                Button { text: "Dots"; highlighted: surface.zoom === 1; onClicked: surface.zoom = 1 }
                Item { Layout.fillWidth: true }
            }
        }

        PrintPreviewSurface {
            id: surface
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        ToolBar {
            Layout.fillWidth: true
            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 10
                anchors.rightMargin: 10
                Label {
                    objectName: "status"
                    Layout.fillWidth: true
                    elide: Text.ElideRight
                    text: !TQTWSProcessorInterface.isPrinting ? "Ready"
                        : (TQTWSProcessorInterface.jobStatus || "Waiting") + ": page " + (TQTWSProcessorInterface.printingPage + 1)
                          + (surface.folder !== TQTWSProcessorInterface.jobFolder ? " of another job"
                             : surface.jobName ? " of \u201C" + surface.jobName + "\u201D" : "")
                }
                Label { objectName: "job"; text: surface.jobName; visible: text.length > 0; rightPadding: 16 }
                Label { text: surface.dots.width > 0 ? surface.dots.width + " \u00D7 " + surface.dots.height + " dots" : "" }
            }
        }
    }
}
