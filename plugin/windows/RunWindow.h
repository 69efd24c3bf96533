#pragma once

#include <unistd.h>

#include <QtQuick/QQuickWindow>
#include <cstdio>
#include <cstring>

#include "plugin/RunPlugin.h"
#include "plugin/windows/SurfaceWindow.h"

/// Runs the process of a window of class T until it is closed or told to end; gives the exit code. What goes wrong is
/// one line of standard error, in which the window is called `what`.
template <typename T>
int RunWindow(int argc, char** argv, char const* what) {
    static char const* name = what;
    static constexpr auto Fail = [](char const* reason) {
        std::fprintf(stderr, "zpl: the %s cannot be shown: %s\n", name, reason);
    };
    // Without a display the toolkit says so in many lines and aborts; one line is enough.
    qInstallMessageHandler([](QtMsgType type, QMessageLogContext const& context, QString const& message) {
        if (context.category && std::strncmp(context.category, "qt.qpa", 6) == 0) return;
        QByteArray const text = message.toLocal8Bit();
        if (type != QtFatalMsg) {
            if (type != QtDebugMsg && type != QtInfoMsg) std::fprintf(stderr, "zpl: %s: %s\n", name, text.constData());
            return;
        }
        Fail(text.contains("platform plugin") ? "there is no display that it can be opened on" : text.constData());
        ::_exit(1);
    });
    // A keyboard that cannot stand within the window does not cover it either.
    if (qEnvironmentVariableIsEmpty("QT_VIRTUALKEYBOARD_DESKTOP_DISABLE"))
        qputenv("QT_VIRTUALKEYBOARD_DESKTOP_DISABLE", "1");
    // Pages are pictures already; so any display will do, also one without acceleration.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    try {
        RunPlugin<T>(argc, argv, T::Name, T::Identifier, T::Name);
    } catch (std::exception const& error) {
        Fail(error.what());
        return 1;
    }
    return 0;
}
