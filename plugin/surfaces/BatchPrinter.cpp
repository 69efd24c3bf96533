#include "plugin/surfaces/BatchPrinter.h"

#include <QtCore/QDir>
#include <QtCore/QPointer>
#include <algorithm>
#include <exception>
#include <string_view>

#include "plugin/surfaces/DrawingThread.h"

namespace {

QStringList ListOf(std::vector<std::string> const& texts) {
    QStringList list;
    for (auto const& text : texts) list.append(Sentence(text));
    return list;
}

std::vector<BatchTemplate> ReadTemplates(FormatDrawer& drawer, TemplateStore const& store,
                                         std::vector<StoredFormat> const& formats) {
    std::vector<BatchTemplate> templates;
    for (auto const& format : formats) {
        BatchTemplate read{format, store.formats.Read(format), {}};
        read.fields = store.settings.Of(format, VariableFields(DrawTemplate(drawer, format, read.bytes))).fields;
        templates.push_back(std::move(read));
    }
    return templates;
}

}  // namespace

BatchPrinter::BatchPrinter(TemplateStore store) : store_(std::move(store)), journal_(store_.JournalFile()) {
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &BatchPrinter::look);
    look();
    if (auto record = journal_.Read()) {
        record_ = std::move(*record);
        Set("stopped", tr("This batch was not finished."), true);
    }
}

BatchPrinter::~BatchPrinter() {
    if (looks_) *looks_ = false;
}

void BatchPrinter::Set(char const* state, QString const& notice, bool isTrouble) {
    state_ = state;
    notice_ = notice;
    isTrouble_ = isTrouble;
    Q_EMIT changed();
}

QString BatchPrinter::list() const {
    return QString::fromStdString(std::filesystem::path(record_.list).filename().string());
}

QStringList BatchPrinter::formats() const {
    QStringList names;
    for (auto const& format : record_.formats) names.append(QString::fromStdString(format.FullName()));
    return names;
}

QStringList BatchPrinter::faults() const { return ListOf(check_.faults); }
QStringList BatchPrinter::remarks() const { return ListOf(check_.remarks); }

void BatchPrinter::look() {
    std::error_code error;  // without the folder there are no lists
    std::filesystem::create_directories(store_.ValuesFolder(), error);
    if (!error && watcher_.directories().isEmpty()) watcher_.addPath(folder());
    auto const names = QDir(folder()).entryList({QStringLiteral("*.csv")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
    if (names == lists_) return;
    lists_ = names;
    Q_EMIT listsChanged();
}

void BatchPrinter::check(QString const& list, QStringList const& formats) {
    bool const isBusy = state_ == std::string_view("printing") || state_ == std::string_view("stopped");
    if (isBusy || list.contains(u'/') || list.isEmpty() || formats.isEmpty()) return;
    auto const file = store_.ValuesFolder() / list.toStdString();
    record_ = {};
    record_.list = file.string();
    record_.listState = BatchRecord::StateOf(file);
    for (auto const& name : formats) record_.formats.push_back(StoredFormat::Named(name.toStdString()));
    check_ = {};
    Set("checking");
    Read([this](Found found) { TakeCheck(std::move(found)); });
}

void BatchPrinter::Read(std::function<void(Found)> take) {
    if (looks_) *looks_ = false;
    looks_ = std::make_shared<std::atomic<bool>>(true);
    store_.drawing.Order(
        this, "batch",
        [take = std::move(take), looks = looks_, store = store_, record = record_](FormatDrawer& drawer) {
            Found found;
            try {
                found.templates = ReadTemplates(drawer, store, record.formats);
                found.check = CheckBatch(record.list, found.templates, [&] { return looks->load(); });
            } catch (std::exception const& error) {
                found.check.refusal = error.what();
            }
            return [take, looks, found] {
                if (*looks) take(found);
            };
        });
}

void BatchPrinter::TakeCheck(Found found) {
    check_ = std::move(found.check);
    templates_ = std::move(found.templates);
    record_.rows = check_.rows;
    record_.labels = check_.labels;
    bool const isNothing = check_.refusal.empty() && check_.faulty == check_.rows;
    if (isNothing) check_.refusal = "no row of the list can print";
    Set(check_.refusal.empty() ? "ready" : "refused", Sentence(check_.refusal), !check_.refusal.empty());
}

void BatchPrinter::start() {
    if (state_ != std::string_view("ready")) return;
    Begin(0, "refused");
}

void BatchPrinter::Begin(std::uint64_t behind, char const* otherwise) {
    try {
        if (BatchRecord::StateOf(record_.list) != record_.listState)
            throw std::runtime_error("the list has changed since it was looked through");
        batch_.emplace(record_.list, templates_, store_.label, behind);
    } catch (std::exception const& error) {
        return Set(otherwise, Sentence(error.what()), true);
    }
    record_.taken = record_.underWay = behind;
    Set("printing");
    HandOver();
}

/// A template that went away or changed would print something else than was looked through.
std::string BatchPrinter::FaultOfTemplates() const {
    try {
        for (auto const& used : templates_) {
            if (store_.formats.Read(used.format) != used.bytes)
                return used.format.FullName() + " has changed since the list was looked through";
        }
    } catch (std::exception const& error) {
        return error.what();
    }
    return {};
}

void BatchPrinter::HandOver() {
    if (isHandedOver_ || state_ != std::string_view("printing")) return;
    try {
        if (auto const fault = FaultOfTemplates(); !fault.empty()) throw std::runtime_error(fault);
        auto piece = batch_->Next();
        if (!piece) {
            batch_.reset();
            journal_.Remove();
            return Set("done", tr("All labels are on their way."));
        }
        record_.underWay = piece->lastRow;
        journal_.Write(record_);
        if (piece->stream.empty()) return TakeAnswer({});
        Send(*piece);
    } catch (std::exception const& error) {
        record_.underWay = record_.taken;
        Set("stopped", Sentence(error.what()), true);
    }
}

void BatchPrinter::Send(Batch::Piece const& piece) {
    isHandedOver_ = true;
    auto const isOnItsWay = std::make_shared<bool>(false);
    store_.print(QByteArray(piece.stream.data(), static_cast<qsizetype>(piece.stream.size())),
                 [self = QPointer(this), isOnItsWay](QString const& error) {
                     if (!self) return;
                     self->isHandedOver_ = false;
                     // What is refused at once has not gone anywhere; of anything else some may print.
                     if (!error.isEmpty() && !*isOnItsWay) self->record_.underWay = self->record_.taken;
                     self->TakeAnswer(error);
                 });
    *isOnItsWay = true;
}

/// About the rows under way.
void BatchPrinter::TakeAnswer(QString const& error) {
    if (!error.isEmpty()) {
        Set("stopped", error, true);
        return Keep();
    }
    record_.taken = record_.underWay;
    Q_EMIT changed();
    if (state_ != std::string_view("printing")) return Keep();
    // From the event loop: the answer may come within the call that hands a piece over.
    QMetaObject::invokeMethod(this, &BatchPrinter::HandOver, Qt::QueuedConnection);
}

/// Of a batch that is stopped; while it prints, each piece keeps it before it is handed over.
void BatchPrinter::Keep() {
    try {
        journal_.Write(record_);
    } catch (std::exception const& error) {
        Set("stopped", Sentence(error.what()), true);
    }
}

void BatchPrinter::stop() {
    if (state_ == std::string_view("checking")) {
        *looks_ = false;
        return Set("");
    }
    if (state_ == std::string_view("printing")) Set("stopped", tr("Stopped. What the printer has taken prints."));
}

void BatchPrinter::goOn(bool again) {
    if (state_ != std::string_view("stopped") || isHandedOver_) return;
    auto const behind = again ? record_.taken : record_.underWay;
    Set("checking");
    Read([this, behind](Found found) { TakeOn(std::move(found), behind); });
}

void BatchPrinter::TakeOn(Found found, std::uint64_t behind) {
    if (!found.check.refusal.empty()) return Set("stopped", Sentence(found.check.refusal), true);
    check_ = std::move(found.check);
    templates_ = std::move(found.templates);
    Begin(behind, "stopped");
}

void BatchPrinter::giveUp() {
    if (isHandedOver_ || state_ == std::string_view("printing") || state_ == std::string_view("checking")) return;
    journal_.Remove();
    batch_.reset();
    record_ = {};
    check_ = {};
    Set("");
}
