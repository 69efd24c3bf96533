import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

// One page of a job. A zoom of 0 fits it in.
Item {
    id: surface

    property alias folder: view.folder
    property alias printedPages: view.printedPages
    property alias page: view.page
    property alias keepsPicture: view.keepsPicture
    property real zoom: 0

    readonly property alias pageCount: view.pageCount
    readonly property alias jobName: view.jobName
    readonly property alias isShown: view.isShown
    readonly property alias shownPage: view.shownPage
    readonly property alias shownPageCount: view.shownPageCount
    readonly property alias dots: view.dots
    readonly property alias shownZoom: view.zoom

    function printedPagesBeside(step) { return view.printedPagesBeside(step) }

    PageView {
        id: view
        anchors.fill: parent
        zoom: surface.zoom > 0 ? surface.zoom : fittingZoom
        origin: Qt.point(flickable.contentX, flickable.contentY)
    }

    Flickable {
        id: flickable
        objectName: "scroll"
        anchors.fill: parent
        contentWidth: Math.max(width, view.contentSize.width)
        contentHeight: Math.max(height, view.contentSize.height)
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.horizontal: ScrollBar { policy: flickable.contentWidth > flickable.width ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }
        ScrollBar.vertical: ScrollBar { policy: flickable.contentHeight > flickable.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }
    }
}
