import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

// The pages of a job, one at a time: the page that prints while it follows, else the one turned to, also when the job
// is over and others print. In front of the first page is the last of the job that was printed before, behind the last
// page the first of the job that prints next, and so on.
Rectangle {
    id: surface

    property alias folder: label.folder
    // Where printed pages are kept, if they are.
    property var printedPages: TQTWSProcessorInterface.printedPages
    // The jobs that print or wait.
    property var waiting: TQTWSProcessorInterface.jobList.waiting
    property bool follows: true
    property int page: 0
    property alias zoom: label.zoom
    property alias turned: label.turned

    readonly property alias pageCount: label.pageCount
    readonly property alias jobName: label.jobName
    readonly property alias isShown: label.isShown
    readonly property alias shownPage: label.shownPage
    readonly property alias shownPageCount: label.shownPageCount
    readonly property alias shownStem: label.printedPages
    readonly property alias dots: label.dots
    readonly property alias badBarcodes: label.badBarcodes
    readonly property alias shownZoom: label.shownZoom

    readonly property var zoomSteps: [0.1, 0.25, 0.5, 0.75, 1, 2, 3, 4, 6, 8]

    // Pages may have come, or gone.
    signal folderTold()

    function turnTo(number) {
        if (pageCount === 0) return
        follows = false
        page = Math.max(0, Math.min(number, pageCount - 1))
    }

    // To the first page of a job, or the last.
    function showJob(job, last) {
        follows = false
        folder = job.folder
        label.printedPages = job.stem
        page = last ? Math.max(pageCount - 1, 0) : 0
    }

    // As a job that has printed, of which there may be pages that are not printed yet.
    function printedJob(stem) { return { folder: stem === printedPages.stem ? printedPages.job : "", stem: stem } }

    // The job that waits in front of this one or behind it; undefined without one.
    function waitingBeside(step) {
        const at = waiting.findIndex(job => job.folder === folder)
        const job = waiting[at < 0 && step < 0 ? -1 : at + step]
        return job && { folder: job.folder, stem: job.folder === printedPages.job ? printedPages.stem : "" }
    }

    // A page back (-1) or on (1), also to that of another job.
    function turnBy(step) {
        const number = page + step
        if (number >= 0 && number < pageCount) return turnTo(number)
        // What has printed lies in front of what waits.
        const isPrinted = label.printedPages !== ""
        const stem = isPrinted ? label.printedPagesBeside(step) : ""
        const job = stem ? printedJob(stem) : waitingBeside(step)
            || (step < 0 && !isPrinted && printedPages.stem ? printedJob(printedPages.stem) : undefined)
        if (job) showJob(job, step < 0)
    }

    readonly property bool mayTurnBack: page > 0 || printedPages.stem !== "" || waitingBeside(-1) !== undefined
    readonly property bool mayTurnOn: page < pageCount - 1 || waitingBeside(1) !== undefined
                                      || (label.printedPages !== "" && label.printedPages !== printedPages.stem)

    function followAgain() {
        follows = true
        follow()
        // Of what is over the last page is left; what waits begins with its first.
        if (!TQTWSProcessorInterface.isPrinting && pageCount > 0 && !waiting.some(job => job.folder === folder)) page = pageCount - 1
    }

    // Whoever has turned pages stays with their job. Before anything has printed, the first that waits is shown, or
    // without one what was printed last before, in another run.
    function follow() {
        if (follows && TQTWSProcessorInterface.jobFolder) {
            folder = TQTWSProcessorInterface.jobFolder
            if (TQTWSProcessorInterface.isPrinting) page = TQTWSProcessorInterface.printingPage
        } else if (follows && !folder && waiting.length > 0) {
            folder = waiting[0].folder
            page = 0
        } else if (follows && !folder && printedPages.stem && label.printedPages !== printedPages.stem) {
            label.printedPages = printedPages.stem
            page = Math.max(pageCount - 1, 0)
        }
        if (folder && folder === printedPages.job) label.printedPages = printedPages.stem
    }

    function zoomTo(value, point) {
        label.zoomAt(value, point || Qt.point(width / 2, height / 2))
    }

    function zoomBy(step, point) {
        const steps = zoomSteps.filter(other => step > 0 ? other > shownZoom + 0.001 : other < shownZoom - 0.001)
        if (steps.length > 0) zoomTo(step > 0 ? steps[0] : steps[steps.length - 1], point)
    }
    function zoomIn() { zoomBy(1) }
    function zoomOut() { zoomBy(-1) }

    color: "#d8d8d8"

    // Another job may have fewer pages.
    onPageCountChanged: if (pageCount > 0 && page >= pageCount) page = pageCount - 1

    Connections {
        target: TQTWSProcessorInterface
        function onJobChanged() { surface.follow() }
    }
    onPrintedPagesChanged: follow()
    onWaitingChanged: follow()
    Component.onCompleted: {
        TQTWSProcessorInterface.jobList.lookAtWaiting()
        follow()
    }

    PrintPreviewLabelSurface {
        id: label
        anchors.fill: parent
        page: surface.page
        keepsPicture: surface.follows
        onFolderTold: surface.folderTold()
    }

    WheelHandler {
        acceptedModifiers: Qt.ControlModifier
        onWheel: event => event.angleDelta.y > 0 ? surface.zoomBy(1, point.position) : surface.zoomBy(-1, point.position)
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
