import QtQuick

// What there is to tell of a form, in a line of its own; nothing takes no room.
Rectangle {
    property alias text: words.text
    property bool isTrouble: false

    visible: text.length > 0
    implicitHeight: visible ? words.implicitHeight + 16 : 0
    radius: 6
    color: isTrouble ? "#fbe9e7" : "#e3f1e5"
    border.color: isTrouble ? "#b3261e" : "#2e7d32"

    Text {
        id: words
        objectName: "notice"
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 10 }
        color: "#202a33"
        font.pixelSize: 15
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
