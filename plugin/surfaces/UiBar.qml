import QtQuick
import QtQuick.Layouts

// A bar of a surface, above or below what it works on: buttons and words in a row.
Rectangle {
    default property alias content: row.data
    property alias spacing: row.spacing

    implicitHeight: 56
    implicitWidth: row.implicitWidth + 12
    color: "#eceff1"

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.margins: 6
        spacing: 6
    }
}
