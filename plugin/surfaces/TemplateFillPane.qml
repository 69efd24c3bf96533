import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// A template's page, and its fields to fill in: side by side, or in a narrow pane that is high enough one above the other.
Item {
    id: pane

    property var form
    readonly property bool isNarrow: width < 520 && height > 240
    // The field, or -1.
    property int typedInto: -1

    Rectangle {
        id: desk
        width: pane.isNarrow ? pane.width : Math.round(pane.width * 0.55)
        height: pane.isNarrow ? Math.round(pane.height * 0.45) : pane.height
        color: "#dfe3e6"

        PageView {
            id: page
            objectName: "page"
            anchors { left: parent.left; right: parent.right; top: parent.top; bottom: remarks.top }
            zoom: fittingZoom
        }
        Binding {
            target: page
            property: "picture"
            when: pane.form !== null && pane.form !== undefined
            value: pane.form?.picture
        }
        // What is found about the label: of the field that is typed into, or else the first; touched, all.
        Rectangle {
            id: remarks
            property bool isUnfolded: false
            readonly property var findings: pane.form?.findings ?? []
            readonly property var first: findings.find(finding => finding.field === pane.typedInto) ?? findings[0]
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: first === undefined ? 0 : words.height + 14
            visible: first !== undefined
            color: "#fff3e0"

            Rectangle { width: parent.width; height: 2; color: "#e68a00" }
            Text {
                id: words
                objectName: "finding"
                x: 10
                y: 8
                width: parent.width - 20 - (more.visible ? more.width + 8 : 0)
                text: remarks.isUnfolded ? remarks.findings.map(finding => finding.text).join("\n") : remarks.first?.text ?? ""
                textFormat: Text.PlainText
                color: "#202a33"
                font.pixelSize: 14
                wrapMode: remarks.isUnfolded ? Text.Wrap : Text.NoWrap
                maximumLineCount: remarks.isUnfolded ? Math.max(1, Math.floor((desk.height - 20) / 20)) : 1
                elide: Text.ElideRight
            }
            Text {
                id: more
                visible: !remarks.isUnfolded && remarks.findings.length > 1
                anchors { right: parent.right; rightMargin: 10; baseline: words.baseline }
                text: "+" + (remarks.findings.length - 1)
                color: "#8a5300"
                font { pixelSize: 14; bold: true }
            }
            MouseArea {
                anchors.fill: parent
                onClicked: remarks.isUnfolded = !remarks.isUnfolded
            }
        }
        Text {
            visible: pane.width < 520
            x: 8
            y: 4
            text: pane.form ? pane.form.name : ""
            color: "#5c6770"
            font { pixelSize: 13; bold: true }
        }
    }

    Flickable {
        id: scroll
        x: pane.isNarrow ? 0 : desk.width
        y: pane.isNarrow ? desk.height : 0
        width: pane.width - x
        height: pane.height - y
        clip: true
        contentHeight: entries.implicitHeight + 24
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        // What is typed into stays in sight above the keyboard.
        function show(item) {
            const place = item.mapToItem(entries, 0, 0).y
            if (place < contentY + 24) contentY = Math.max(0, place - 24)
            if (place + item.height > contentY + height - 12) contentY = place + item.height - height + 24
        }

        ColumnLayout {
            id: entries
            x: 12
            y: 12
            width: scroll.width - 24
            spacing: 10

            TemplateNotice {
                Layout.fillWidth: true
                text: pane.form ? pane.form.notice : ""
                isTrouble: pane.form ? pane.form.isTrouble : false
            }
            UiButton {
                objectName: "storeAgain"
                visible: pane.form ? pane.form.isGone : false
                text: "Store it again"
                onClicked: pane.form.storeAgain()
            }
            Repeater {
                model: pane.form ? pane.form.fields : []
                TemplateFieldEntry {
                    id: entry
                    required property int index
                    required property var modelData
                    Layout.fillWidth: true
                    field: modelData
                    value: pane.form.values[index] ?? ""
                    fault: pane.form.faults[index] ?? ""
                    onEdited: text => pane.form.setValue(index, text)
                    isMarked: remarks.findings.some(finding => finding.field === index)
                    onIsTypedIntoChanged: {
                        if (isTypedInto) scroll.show(entry)
                        if (isTypedInto || pane.typedInto === index) pane.typedInto = isTypedInto ? index : -1
                    }
                    Connections {
                        target: scroll
                        function onHeightChanged() { if (entry.isTypedInto) scroll.show(entry) }
                    }
                }
            }
            Text {
                Layout.fillWidth: true
                visible: pane.form ? pane.form.isReady && pane.form.fields.length === 0 : false
                text: "There is nothing to fill in: this template prints as it is."
                color: "#5c6770"
                font.pixelSize: 16
                wrapMode: Text.Wrap
            }
        }
    }
}
