import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

// The label that an editor works on: a touch selects a field, a drag moves what is selected, or the view where no field
// is. A touch on the field that is selected goes on to the one beneath. A zoom of 0 fits the label in.
Item {
    id: surface

    readonly property QtObject editor: TQTWSProcessorInterface.editor
    property real zoom: 0
    // Whether a touch adds to what is selected.
    property bool several: false
    readonly property alias shownZoom: view.zoom

    // With what is seen at a point staying there.
    function zoomAt(next, at) {
        const dot = view.dotAt(at)
        zoom = next
        const now = view.itemRect(Qt.rect(dot.x, dot.y, 0, 0))
        flickable.pan(at.x - now.x, at.y - now.y)
    }
    function zoomTo(next) { zoomAt(next, Qt.point(width / 2, height / 2)) }

    implicitWidth: 240
    implicitHeight: 240

    LabelPartOutline {
        anchors.fill: parent
        visible: !surface.editor.isOpen
    }

    PageView {
        id: view
        objectName: "page"
        anchors.fill: parent
        visible: surface.editor.isOpen
        picture: surface.editor.picture
        zoom: surface.zoom > 0 ? surface.zoom : fittingZoom
        origin: Qt.point(flickable.contentX, flickable.contentY)
    }

    Flickable {
        id: flickable
        objectName: "scroll"
        anchors.fill: parent
        interactive: false
        contentWidth: Math.max(width, view.contentSize.width)
        contentHeight: Math.max(height, view.contentSize.height)
        ScrollBar.horizontal: ScrollBar { policy: flickable.contentWidth > flickable.width ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }
        ScrollBar.vertical: ScrollBar { policy: flickable.contentHeight > flickable.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

        function pan(right, down) {
            contentX = Math.max(0, Math.min(contentX - right, contentWidth - width))
            contentY = Math.max(0, Math.min(contentY - down, contentHeight - height))
        }
        onContentWidthChanged: pan(0, 0)
        onContentHeightChanged: pan(0, 0)
    }

    Repeater {
        model: surface.editor.isOpen ? surface.editor.boxes : []
        Rectangle {
            required property rect modelData
            readonly property rect place: view.pageRect, view.itemRect(modelData)
            x: place.x - 3
            y: place.y - 3
            width: place.width + 6
            height: place.height + 6
            color: "#181769aa"
            border { color: "#1769aa"; width: 2 }
            radius: 2
        }
    }

    MouseArea {
        id: touch
        anchors.fill: parent
        enabled: surface.editor.isOpen

        readonly property real slop: 8   // pixels that a finger may slip
        readonly property real reach: 14 // pixels beside a small field
        property point from
        property point last
        property int field: -1
        property bool wasSelected: false
        property string does

        PinchHandler {
            target: null
            // One finger may have touched a field.
            grabPermissions: PointerHandler.CanTakeOverFromAnything
            property real zoomBefore: 1
            onActiveChanged: if (active) zoomBefore = view.zoom
            onActiveScaleChanged: {
                if (active) surface.zoomAt(Math.max(0.1, Math.min(8, zoomBefore * activeScale)), centroid.position)
            }
        }

        onPressed: mouse => {
            from = last = Qt.point(mouse.x, mouse.y)
            const selected = surface.editor.selectedAt(view.dotAt(from), reach / view.zoom)
            wasSelected = selected >= 0
            field = wasSelected ? selected : surface.editor.fieldAt(view.dotAt(from), reach / view.zoom)
            does = ""
        }
        onPositionChanged: mouse => {
            const at = Qt.point(mouse.x, mouse.y)
            if (does === "" && Math.hypot(at.x - from.x, at.y - from.y) > slop) start()
            if (does === "move") {
                const start = view.dotAt(from)
                const now = view.dotAt(at)
                surface.editor.drag(now.x - start.x, now.y - start.y)
            }
            if (does === "pan") flickable.pan(at.x - last.x, at.y - last.y)
            last = at
        }
        onReleased: {
            if (does === "") tap()
            does = "nothing"
        }
        // By a second finger: what the first has done is taken back.
        onCanceled: {
            if (does === "move") surface.editor.drag(0, 0)
            does = "nothing"
        }

        function start() {
            does = field >= 0 ? "move" : "pan"
            if (does === "pan") return
            if (!wasSelected) surface.several ? surface.editor.toggle(field) : surface.editor.select(field)
            surface.editor.startDrag()
        }
        function tap() {
            const touched = surface.editor.fieldAt(view.dotAt(from), reach / view.zoom, wasSelected && !surface.several)
            if (surface.several) surface.editor.toggle(touched)
            else if (touched >= 0) surface.editor.select(touched)
            else surface.editor.selectNone()
        }
    }
}
