#include <unistd.h>

#include <QtQuick/QQuickWindow>
#include <cstdio>
#include <cstring>

#include "plugin/RunPlugin.h"
#include "plugin/preview/PreviewPlugin.h"

namespace {

void Fail(char const* reason) { std::fprintf(stderr, "zpl: the preview cannot be shown: %s\n", reason); }

/// Without a display the toolkit says so in many lines and aborts; one line is enough.
void TakeMessage(QtMsgType type, QMessageLogContext const& context, QString const& message) {
    if (context.category && std::strncmp(context.category, "qt.qpa", 6) == 0) return;
    QByteArray const text = message.toLocal8Bit();
    if (type != QtFatalMsg) {
        if (type != QtDebugMsg && type != QtInfoMsg) std::fprintf(stderr, "zpl: preview: %s\n", text.constData());
        return;
    }
    Fail(text.contains("platform plugin") ? "there is no display that it can be opened on" : text.constData());
    ::_exit(1);
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(TakeMessage);
    // Pages are pictures already; so any display will do, also one without acceleration.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    try {
        RunPlugin<PreviewPlugin>(argc, argv, PreviewPlugin::Name, PreviewPlugin::Identifier, PreviewPlugin::Name);
    } catch (std::exception const& error) {
        Fail(error.what());
        return 1;
    }
    return 0;
}
