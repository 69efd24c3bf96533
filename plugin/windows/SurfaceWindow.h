#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <memory>

#include "plugin/TQPluginInterface.h"

class QQuickWindow;
class TQTWSProcessorInterface;

/// Surfaces in a window, as a process of its own that follows a printer over the property bus. What becomes of it, or
/// of the display, does not touch the host.
class SurfaceWindow : public QObject, public TQPluginInterface {
    Q_OBJECT

public:
    ~SurfaceWindow() override;

    void Create(QString const& name, std::shared_ptr<QQmlApplicationEngine> engine) override;
    /// Throws std::runtime_error if the window cannot be made.
    void Init(std::shared_ptr<PublishingPropertyManager> properties, std::shared_ptr<PICLServerAgent> agent) override;

protected:
    /// `window`: its QML.
    explicit SurfaceWindow(QUrl window) : source_(std::move(window)) {}

private:
    void Load();
    void KeepPicture(QQuickWindow& window, QString const& file);

    QUrl const source_;
    std::shared_ptr<QQmlApplicationEngine> engine_;
    std::shared_ptr<TQTWSProcessorInterface> twsInterface_;
    QTimer pictureTimer_;
};

/// The print preview.
class PreviewWindow : public SurfaceWindow {
public:
    /// Of the component on the bus.
    static constexpr char const* Name = "ZplPreview";
    static constexpr char const* Identifier = "2C9D7B41-58E3-4A06-9F1D-E07A64B3C825";

    PreviewWindow() : SurfaceWindow(QUrl(QStringLiteral("qrc:/TCPrintEngine/PreviewWindow.qml"))) {}
};

/// All surfaces, as on the printer's own screen.
class ScreenWindow : public SurfaceWindow {
public:
    static constexpr char const* Name = "ZplScreen";
    static constexpr char const* Identifier = "7E10B5D4-93AF-4C62-8D07-1B5A2E94C6F3";

    ScreenWindow() : SurfaceWindow(QUrl(QStringLiteral("qrc:/TCPrintEngine/ScreenWindow.qml"))) {}
};
