#include "plugin/surfaces/RegisterSurfaces.h"

#include <QtQml/qqml.h>
#include <QtCore/QDir>
#include <QtQml/QQmlEngine>

#include "jobhost/TQZPLProcessorInterface.h"
#include "plugin/TQTWSProcessorInterface.h"
#include "plugin/surfaces/PageView.h"

// The initialiser of resources in a static library has to be named from outside every namespace.
static void InitializeResources() { Q_INIT_RESOURCE(TCPrintEngine); }

void RegisterSurfaces(QQmlEngine& engine, TQZPLProcessorInterface* zpl, TQTWSProcessorInterface* tws) {
    constexpr char const* Module = "TCPrintEngine";
    InitializeResources();
    engine.addImportPath(QStringLiteral("qrc:/"));
    qmlRegisterType<PageView>(Module, 1, 0, "PageView");
    if (zpl) qmlRegisterSingletonInstance(Module, 1, 0, "TQZPLProcessorInterface", zpl);
    qmlRegisterSingletonInstance(Module, 1, 0, "TQTWSProcessorInterface", tws);
}
