import QtQuick
import QtQuick.Layouts
import TCPrintEngine

// What the printer does, and beside it to pause it, have it go on, and cancel the job that prints. What is shown is
// what the printer says of itself, not what was touched.
RowLayout {
    id: state

    // The buttons have signs in place of words.
    property bool isSmall: false
    property bool showsWords: true
    property alias pixelSize: words.font.pixelSize

    readonly property string status: TQTWSProcessorInterface.jobStatus
    readonly property bool isPrinting: TQTWSProcessorInterface.isPrinting
    readonly property bool stands: status === "Print Paused" || status === "Print Error"

    spacing: 6

    function tellIfNot(isTaken) {
        if (!isTaken) trouble.show("The printer takes no orders from here at present.")
    }

    Text {
        id: words
        objectName: "state"
        visible: state.showsWords
        Layout.fillWidth: true
        leftPadding: 8
        rightPadding: 4
        text: !state.isPrinting ? state.status || "Ready"
            : (state.status || "Waiting") + ", page " + (TQTWSProcessorInterface.printingPage + 1)
        color: state.status === "Print Error" ? "#b71c1c" : state.isPrinting ? "#1769aa" : "#58656f"
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideRight
    }
    UiButton {
        objectName: "pause"
        text: state.stands ? "Resume" : "Pause"
        sign: !state.isSmall ? "" : state.stands ? "resume" : "pause"
        highlighted: state.stands
        Layout.minimumWidth: state.isSmall ? 44 : 88
        onClicked: state.tellIfNot(state.stands ? TQTWSProcessorInterface.resume() : TQTWSProcessorInterface.pause())
    }
    UiButton {
        objectName: "cancel"
        text: "Cancel job"
        sign: state.isSmall ? "cancel" : ""
        enabled: state.isPrinting
        onClicked: question.ask()
    }

    UiDialog {
        id: question
        objectName: "cancelQuestion"

        // The job that is asked about, and no other that prints meanwhile.
        property string folder
        readonly property var job: TQTWSProcessorInterface.jobList.waiting.find(job => job.folder === folder)
        readonly property bool isOver: !state.isPrinting || TQTWSProcessorInterface.jobFolder !== folder

        function ask() {
            TQTWSProcessorInterface.jobList.lookAtWaiting()
            folder = TQTWSProcessorInterface.jobFolder
            open()
        }

        title: "Cancel the job that prints?"
        words: (job ? "\u201C" + job.name + "\u201D, page " + (TQTWSProcessorInterface.printingPage + 1) + " of " + job.pages + ". " : "")
               + "What has not printed of it will not print."
        accept: "Cancel job"
        reject: "Keep it"
        onIsOverChanged: if (isOver) close()
        onAccepted: state.tellIfNot(TQTWSProcessorInterface.cancel(folder))
    }
    UiDialog {
        id: trouble
    }
}
