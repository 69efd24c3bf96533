#include "plugin/TQTWSProcessorInterface.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>
#include <cmath>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/Json.h"
#include "plugin/Machine.h"
#include "plugin/TWSProcessorInterface.h"
#include "plugin/surfaces/LabelEditor.h"
#include "plugin/surfaces/PrintedJobs.h"
#include "plugin/surfaces/TemplateList.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

TQTWSProcessorInterface::TQTWSProcessorInterface() : jobList_(std::make_unique<JobList>(Machine().jobsFolder)) {}
TQTWSProcessorInterface::~TQTWSProcessorInterface() = default;

QObject* TQTWSProcessorInterface::editor() {
    if (!editor_) editor_ = std::make_unique<LabelEditor>(*this);
    return editor_.get();
}

void TQTWSProcessorInterface::ConnectModel(std::shared_ptr<TQTWSProcessorInterface> const& self,
                                           std::shared_ptr<TWSProcessorInterface> model) {
    self->model_ = std::move(model);
    self->Update();
    self->ReadPrintedPages();
    Q_EMIT self->labelPartChanged();
}

void TQTWSProcessorInterface::SetPropertyManager(std::shared_ptr<PublishingPropertyManager> properties) {
    properties_ = std::move(properties);
    Q_EMIT labelPartChanged();
}

void TQTWSProcessorInterface::InitCallbacks() {
    auto const update = [this](std::shared_ptr<Property> const&) {
        QMetaObject::invokeMethod(this, &TQTWSProcessorInterface::Update, Qt::QueuedConnection);
    };
    model_->GetPrintJobStatusProperty()->AddCallback(update);
    model_->GetCurrentJobPathProperty()->AddCallback(update);
    model_->GetCurrentPrintingPageProperty()->AddCallback(update);
    model_->GetPrintedPagesProperty()->AddCallback([this](std::shared_ptr<Property> const&) {
        QMetaObject::invokeMethod(this, &TQTWSProcessorInterface::ReadPrintedPages, Qt::QueuedConnection);
    });
}

void TQTWSProcessorInterface::SetServerAgent(std::shared_ptr<PICLServerAgent> agent) {
    orders_ = std::make_unique<DriverOrders>(properties_, agent);
    door_ = std::make_unique<PrintDoor>(properties_, std::move(agent));
}

void TQTWSProcessorInterface::Update() {
    if (isPrinting()) jobFolder_ = QString::fromStdString(model_->GetCurrentJobPathProperty()->Get());
    Q_EMIT jobChanged();
}

void TQTWSProcessorInterface::ReadPrintedPages() {
    printedPages_ = {{QStringLiteral("job"), QString()}, {QStringLiteral("stem"), QString()}};
    ReadJsonSettings(model_->GetPrintedPagesProperty()->Get(), [this](std::string_view name, std::string_view value) {
        auto const text = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
        if (name == "job") printedPages_[QStringLiteral("job")] = text;
        if (name == "pages") printedPages_[QStringLiteral("stem")] = text;
    });
    auto& stem = printedPages_[QStringLiteral("stem")];
    QString const pages = stem.toString();
    // A folder names no job.
    if (pages.endsWith(u'/')) {
        stem = QString();
        FindNewestPrinted(pages);
    }
    Q_EMIT printedPagesChanged();
}

/// Beside the main thread, as the folder may hold many pages.
void TQTWSProcessorInterface::FindNewestPrinted(QString const& folder) {
    auto const take = [self = QPointer(this)](QString const& found) {
        auto const stem = QStringLiteral("stem");
        if (!self || !self->printedPages_[stem].toString().isEmpty()) return;
        self->printedPages_[stem] = found;
        Q_EMIT self->printedPagesChanged();
    };
    QThreadPool::globalInstance()->start([take, folder] {
        auto const newest = PrintedJob::Newest(folder, 1);
        if (newest.empty()) return;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [take, found = newest.front().stem] { take(found); }, Qt::QueuedConnection);
    });
}

bool TQTWSProcessorInterface::isPrinting() const {
    if (!model_) return false;
    std::string const path = model_->GetCurrentJobPathProperty()->Get();
    return !path.empty() && path != JobFileSystemStrings::NoPage;
}

QString TQTWSProcessorInterface::jobStatus() const {
    return model_ ? QString::fromStdString(model_->GetPrintJobStatusProperty()->Get()) : QString();
}

int TQTWSProcessorInterface::printingPage() const {
    return model_ ? static_cast<int>(model_->GetCurrentPrintingPageProperty()->Get()) : 0;
}

double TQTWSProcessorInterface::labelWidth() const { return model_ ? model_->GetLabelPart().GetWidth() : 0; }
double TQTWSProcessorInterface::labelHeight() const { return model_ ? model_->GetLabelPart().GetHeight() : 0; }

/// 0 without it.
unsigned TQTWSProcessorInterface::Number(char const* identifier) const {
    auto const property =
        properties_ ? std::dynamic_pointer_cast<UInt32Property>(properties_->Find(identifier)) : nullptr;
    return property ? property->Get() : 0;
}

unsigned TQTWSProcessorInterface::Resolution() const { return Number(PropertyNames::DotsPerInch); }

DeskSettings TQTWSProcessorInterface::PrinterDesk() const {
    DeskSettings desk;
    if (IsPrinterDpi(Resolution())) desk.printerDpi = Resolution();
    unsigned const emulated = Number(PropertyNames::ZPLEmulatedDpi);
    desk.designDpi = emulated > 0 ? emulated : desk.printerDpi;
    if (labelWidth() > 0) desk.widthInches = labelWidth();
    if (labelHeight() > 0) desk.heightInches = labelHeight();
    desk.machine = Machine();
    desk.machine.runningOnTarget = false;
    return desk;
}

QObject* TQTWSProcessorInterface::templates() {
    if (templates_ || !model_ || !properties_) return templates_.get();
    templates_ = std::make_unique<TemplateList>(PrinterDesk(), [this](QByteArray stream, auto done) {
        if (!door_) return done(tr("There is no way to the printer"));
        door_->Print(std::move(stream), std::move(done));
    });
    return templates_.get();
}

QVariantList TQTWSProcessorInterface::labelFields() const {
    if (!model_) return {};
    auto const field = [](char const* name, QString const& value) {
        return QVariantMap{{QStringLiteral("name"), QString::fromLatin1(name)}, {QStringLiteral("value"), value}};
    };
    auto const part = model_->GetLabelPart();
    bool const continuous = part.GetIsContinuous();
    QVariantList fields{
        field("Media", continuous ? QStringLiteral("continuous") : QStringLiteral("labels")),
        field("Width", QString::number(part.GetWidth()) + QStringLiteral(" in")),
        field("Height", continuous ? QStringLiteral("as each format says")
                                   : QString::number(part.GetHeight()) + QStringLiteral(" in")),
    };
    if (unsigned const dpi = Resolution(); dpi > 0) {
        auto const dots = [dpi](double inches) { return QString::number(std::lround(inches * dpi)); };
        fields.append(field("Resolution", QString::number(dpi) + QStringLiteral(" dpi")));
        fields.append(field("Dots", dots(part.GetWidth()) + QStringLiteral(" x ") + dots(part.GetHeight())));
    }
    return fields;
}
