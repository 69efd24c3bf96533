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
    property alias turned: view.turned
    property real zoom: 0

    readonly property alias pageCount: view.pageCount
    readonly property alias jobName: view.jobName
    readonly property alias isShown: view.isShown
    readonly property alias shownPage: view.shownPage
    readonly property alias shownPageCount: view.shownPageCount
    readonly property alias dots: view.dots
    readonly property alias badBarcodes: view.badBarcodes
    readonly property alias shownZoom: view.zoom

    // Pages may have come, or gone.
    signal folderTold()

    function printedPagesBeside(step) { return view.printedPagesBeside(step) }

    // What lies at a point stays there.
    function zoomAt(value, point) {
        const dot = view.dotAt(point)
        zoom = value
        const now = view.itemRect(Qt.rect(dot.x, dot.y, 0, 0))
        flickable.contentX = Math.max(0, Math.min(flickable.contentX + now.x - point.x, flickable.contentWidth - flickable.width))
        flickable.contentY = Math.max(0, Math.min(flickable.contentY + now.y - point.y, flickable.contentHeight - flickable.height))
    }

    PageView {
        id: view
        objectName: "view"
        anchors.fill: parent
        zoom: surface.zoom > 0 ? surface.zoom : fittingZoom
        origin: Qt.point(flickable.contentX, flickable.contentY)
        onFolderTold: surface.folderTold()
    }

    Flickable {
        id: flickable
        objectName: "scroll"
        anchors.fill: parent
        contentWidth: Math.max(width, view.contentSize.width)
        contentHeight: Math.max(height, view.contentSize.height)
        boundsBehavior: Flickable.StopAtBounds
        interactive: !pinch.active
        ScrollBar.horizontal: ScrollBar { policy: flickable.contentWidth > flickable.width ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }
        ScrollBar.vertical: ScrollBar { policy: flickable.contentHeight > flickable.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

        TapHandler {
            onDoubleTapped: point => surface.zoom > 0 ? surface.zoom = 0
                : surface.zoomAt(view.zoom >= 1 ? view.zoom * 2 : 1, surface.mapFromItem(null, point.scenePosition))
        }
    }

    // Two fingers. Dots are whole again when they are lifted.
    PinchHandler {
        id: pinch
        property real before: 1
        property point middle
        target: null
        // One finger may have begun to scroll.
        grabPermissions: PointerHandler.CanTakeOverFromAnything
        onActiveChanged: {
            if (active) before = view.zoom
            else if (view.zoom > 1) surface.zoomAt(Math.round(view.zoom), middle)
        }
        onActiveScaleChanged: {
            if (!active) return
            middle = surface.mapFromItem(null, pinch.centroid.scenePosition)
            surface.zoomAt(Math.max(0.05, Math.min(before * activeScale, 16)), middle)
        }
    }
}
