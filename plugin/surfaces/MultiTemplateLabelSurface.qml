import QtQuick
import QtQuick.Layouts

// Several labels of a template side by side.
RowLayout {
    id: surface

    property int count: 2

    Repeater {
        model: surface.count
        TemplateLabelSurface {
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
