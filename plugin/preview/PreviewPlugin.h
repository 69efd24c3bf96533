#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <memory>

#include "plugin/TQPluginInterface.h"

class PrintedPages;
class QQuickWindow;
class TQTWSProcessorInterface;

/// The print preview as a process of its own: a window that follows the jobs of a printer over the property bus. What
/// becomes of it, or of the display, does not touch the host.
class PreviewPlugin : public QObject, public TQPluginInterface {
    Q_OBJECT

public:
    /// Of the component on the bus.
    static constexpr char const* Name = "ZplPreview";
    static constexpr char const* Identifier = "2C9D7B41-58E3-4A06-9F1D-E07A64B3C825";

    ~PreviewPlugin() override;

    void Create(QString const& name, std::shared_ptr<QQmlApplicationEngine> engine) override;
    /// Throws std::runtime_error if the window cannot be made.
    void Init(std::shared_ptr<PublishingPropertyManager> properties, std::shared_ptr<PICLServerAgent> agent) override;

private:
    void KeepPicture(QQuickWindow& window, QString const& file);

    std::shared_ptr<QQmlApplicationEngine> engine_;
    std::shared_ptr<TQTWSProcessorInterface> twsInterface_;
    std::shared_ptr<PrintedPages> printedPages_;
    QTimer pictureTimer_;
};
