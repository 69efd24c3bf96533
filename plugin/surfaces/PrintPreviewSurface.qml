import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

// The pages of a job, one at a time: the page that prints while it follows, else the one turned to, also when the job
// is over and others print. In front of the first page is the last of the job that was printed before, and so on.
Rectangle {
    id: surface

    property alias folder: label.folder
    // Where printed pages are kept, if they are.
    property var printedPages: TQTWSProcessorInterface.printedPages
    property bool follows: true
    property int page: 0
    property alias zoom: label.zoom

    readonly property alias pageCount: label.pageCount
    readonly property alias jobName: label.jobName
    readonly property alias isShown: label.isShown
    readonly property alias shownPage: label.shownPage
    readonly property alias shownPageCount: label.shownPageCount
    readonly property alias dots: label.dots
    readonly property alias shownZoom: label.shownZoom

    readonly property var zoomSteps: [0.1, 0.25, 0.5, 0.75, 1, 2, 3, 4, 6, 8]

    function turnTo(number) {
        if (pageCount === 0) return
        follows = false
        page = Math.max(0, Math.min(number, pageCount - 1))
    }

    // A page back (-1) or on (1), also to that of another job.
    function turnBy(step) {
        const number = page + step
        if (number >= 0 && number < pageCount) return turnTo(number)
        const beside = label.printedPages ? label.printedPagesBeside(step) : step < 0 ? printedPages.stem : ""
        if (!beside) return
        follows = false
        // Of the last one there may be pages that are not printed yet.
        folder = beside === printedPages.stem ? printedPages.job : ""
        label.printedPages = beside
        page = step < 0 ? Math.max(pageCount - 1, 0) : 0
    }

    readonly property bool mayTurnBack: page > 0 || printedPages.stem !== ""
    readonly property bool mayTurnOn: page < pageCount - 1 || (label.printedPages !== "" && label.printedPages !== printedPages.stem)

    function followAgain() {
        follows = true
        follow()
        if (!TQTWSProcessorInterface.isPrinting && pageCount > 0) page = pageCount - 1
    }

    // Whoever has turned pages stays with their job.
    function follow() {
        if (follows && TQTWSProcessorInterface.jobFolder) {
            folder = TQTWSProcessorInterface.jobFolder
            if (TQTWSProcessorInterface.isPrinting) page = TQTWSProcessorInterface.printingPage
        }
        if (folder && folder === printedPages.job) label.printedPages = printedPages.stem
    }

    function zoomIn() {
        const next = zoomSteps.find(step => step > shownZoom + 0.001)
        if (next !== undefined) zoom = next
    }

    function zoomOut() {
        const before = zoomSteps.filter(step => step < shownZoom - 0.001)
        if (before.length > 0) zoom = before[before.length - 1]
    }

    color: "#d8d8d8"

    // Another job may have fewer pages.
    onPageCountChanged: if (pageCount > 0 && page >= pageCount) page = pageCount - 1

    Connections {
        target: TQTWSProcessorInterface
        function onJobChanged() { surface.follow() }
    }
    onPrintedPagesChanged: follow()
    Component.onCompleted: follow()

    PrintPreviewLabelSurface {
        id: label
        anchors.fill: parent
        page: surface.page
        keepsPicture: surface.follows
    }

    WheelHandler {
        acceptedModifiers: Qt.ControlModifier
        onWheel: event => event.angleDelta.y > 0 ? surface.zoomIn() : surface.zoomOut()
    }

    Label {
        anchors.centerIn: parent
        visible: text.length > 0
        padding: 8
        background: Rectangle { color: "#f8f8f8"; border.color: "#909090"; radius: 4 }
        text: label.dots.width === 0 && (surface.follows || surface.pageCount === 0) ? "There is no page to show yet"
            : !label.isShown && !surface.follows ? "Page " + (surface.page + 1) + " is not there: not rendered yet, or printed and not kept"
            : ""
    }
}
