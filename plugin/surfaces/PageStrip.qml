import QtQuick
import QtQuick.Controls.Basic
import TCPrintEngine

// The pages of a job, small and one below the other. Only those that are in sight are there, whatever number there is.
ListView {
    id: strip

    property string folder
    property string printedPages
    property int page: 0

    signal chosen(int number)

    // Looks for pages that were not there.
    function lookAgain() {
        for (let i = 0; i < contentItem.children.length; ++i) {
            const entry = contentItem.children[i]
            if (entry.lookAgain) entry.lookAgain()
        }
    }

    clip: true
    reuseItems: true
    cacheBuffer: 0
    spacing: 4
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    onPageChanged: positionViewAtIndex(page, ListView.Contain)
    onCountChanged: positionViewAtIndex(page, ListView.Contain)

    delegate: AbstractButton {
        id: entry
        required property int index
        function lookAgain() { view.lookAgain() }

        objectName: "page" + (index + 1)
        topPadding: 4
        width: strip.width
        height: strip.width + 16
        focusPolicy: Qt.NoFocus
        Accessible.name: "Page " + (index + 1)
        onClicked: strip.chosen(index)

        background: Rectangle {
            radius: 6
            color: entry.index === strip.page ? "#cfdbe6" : "transparent"
            border { color: "#1769aa"; width: entry.index === strip.page ? 2 : 0 }
        }
        contentItem: Item {
            PageView {
                id: view
                objectName: "small" + (entry.index + 1)
                anchors { fill: parent; bottomMargin: 18 }
                small: true
                folder: strip.folder
                printedPages: strip.printedPages
                page: entry.index
            }
            Text {
                anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom }
                text: entry.index + 1
                color: view.isShown ? "#202a33" : "#8a959e"
                font.pixelSize: 13
            }
        }
    }
}
