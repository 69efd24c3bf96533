#include "jobhost/model/PrinterContext.h"

#include <algorithm>
#include <cmath>

#include "PrintEngine/Printing/JobMetaData.h"
#include "jobhost/model/ZPLProcessorInterface.h"
#include "rfid/TagOperations.h"

namespace {

/// A character property holds one byte; an empty one, as a bad setting may leave it, stands for its default.
char CharacterOf(StringProperty const& property, char fallback) {
    std::string const value = property.Get();
    return value.empty() ? fallback : value.front();
}

void Ask(std::function<void()> const& request) {
    if (request) request();
}

}  // namespace

PrinterContext::PrinterContext(ZPLProcessorInterface& model, Scripting::Dpi printerDpi, Scripting::Dpi designDpi,
                               std::shared_ptr<Clock const> clock, Requests requests,
                               std::shared_ptr<PrinterFeatureCheckerInterface const> checker)
    : model_(model),
      formatPrefix_(model.GetZPLFormatProperty()),
      controlPrefix_(model.GetZPLControlProperty()),
      delimiter_(model.GetZPLDelimiterProperty()),
      printerDpi_(printerDpi),
      designDpi_(designDpi),
      clock_(std::move(clock)),
      requests_(std::move(requests)),
      checker_(std::move(checker)) {}

char PrinterContext::FormatPrefix() const { return CharacterOf(*formatPrefix_, '^'); }
char PrinterContext::ControlPrefix() const { return CharacterOf(*controlPrefix_, '~'); }
char PrinterContext::Delimiter() const { return CharacterOf(*delimiter_, ','); }
void PrinterContext::SetFormatPrefix(char character) { formatPrefix_->Set(std::string(1, character)); }
void PrinterContext::SetControlPrefix(char character) { controlPrefix_->Set(std::string(1, character)); }
void PrinterContext::SetDelimiter(char character) { delimiter_->Set(std::string(1, character)); }

Scripting::PrinterStatus PrinterContext::Status() const {
    Scripting::PrinterStatus status;
    auto const part = model_.GetLabelPart();
    status.continuousMedia = part.GetIsContinuous();
    status.partLength = static_cast<unsigned>(std::lround(part.GetHeight() * designDpi_.Value()));
    status.paused = model_.GetPrintJobStatusProperty()->Get() == "Print Paused";
    unsigned const pages = PagesOfCurrentJob();
    status.labelsRemaining = pages - std::min(model_.GetCurrentPrintingPageProperty()->Get(), pages);
    if (requests_.status) requests_.status(status);
    return status;
}

/// Hosts poll the state, and the metadata of a job may be long: they are read once.
unsigned PrinterContext::PagesOfCurrentJob() const {
    std::string const path = model_.GetCurrentJobPath();
    if (path != jobPath_) {
        auto const job = PrintEngine::Printing::JobMetaData::Read(path);
        if (!job) return 0;
        jobPath_ = path;
        jobPages_ = job->totalPages;
    }
    return jobPages_;
}

void PrinterContext::CancelAll() { Ask(requests_.cancelAll); }
void PrinterContext::Pause() { Ask(requests_.pause); }
void PrinterContext::Start() { Ask(requests_.start); }
void PrinterContext::Reset() { Ask(requests_.reset); }
void PrinterContext::SendToHost(std::string_view data) {
    if (requests_.sendToHost) requests_.sendToHost(data);
}

void PrinterContext::AddToTagLog(std::vector<RfidOperation> const& operations,
                                 std::vector<RfidReadResponse> const& responses) {
    constexpr std::size_t LongestLog = std::size_t{64} << 10;  // bytes
    tagLog_ += TagOperations::Report(operations, responses);
    if (tagLog_.size() <= LongestLog) return;
    std::size_t const lineEnd = tagLog_.find('\n', tagLog_.size() - LongestLog);
    tagLog_.erase(0, lineEnd == tagLog_.npos ? tagLog_.size() : lineEnd + 1);
}
