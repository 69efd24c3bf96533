#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "Scripting/PrinterContextInterface.h"
#include "foundation/Clock.h"

class StringProperty;
class ZPLProcessorInterface;

/// What of the machine depends on its make.
class PrinterFeatureCheckerInterface {
public:
    virtual ~PrinterFeatureCheckerInterface() = default;
    virtual bool HasAdjustablePrintSpeed() const = 0;
};

/// The printer as a print stream sees it, on the properties of the model: its characters live there, so that they
/// outlast the stream. Requests to the machine go to callbacks; without one a request has no effect.
class PrinterContext : public Scripting::PrinterContextInterface {
public:
    /// What the machine does when a stream asks.
    struct Requests {
        std::function<void()> cancelAll;
        std::function<void()> pause;
        std::function<void()> start;
        std::function<void()> reset;
        std::function<void(std::string_view)> sendToHost;
        /// Completes what the model itself cannot tell of the printer's state.
        std::function<void(Scripting::PrinterStatus&)> status;
    };

    PrinterContext(ZPLProcessorInterface& model, Scripting::Dpi printerDpi, Scripting::Dpi designDpi,
                   std::shared_ptr<Clock const> clock, Requests requests = {},
                   std::shared_ptr<PrinterFeatureCheckerInterface const> checker = nullptr);

    bool HasAdjustablePrintSpeed() const { return checker_ && checker_->HasAdjustablePrintSpeed(); }

    char FormatPrefix() const override;
    char ControlPrefix() const override;
    char Delimiter() const override;
    void SetFormatPrefix(char character) override;
    void SetControlPrefix(char character) override;
    void SetDelimiter(char character) override;

    Scripting::Dpi PrinterDpi() const override { return printerDpi_; }
    Scripting::Dpi DesignDpi() const override { return designDpi_; }

    std::chrono::system_clock::time_point Now() const override { return clock_->Now(); }

    /// The desk has a cutter that cuts wherever it is asked to, and none that counts.
    bool CutsAfterLabel() const override { return true; }
    std::optional<unsigned> CutInterval() const override { return std::nullopt; }

    Scripting::PrinterStatus Status() const override;

    void CancelAll() override;
    void Pause() override;
    void Start() override;
    void Reset() override;
    void SendToHost(std::string_view data) override;
    void AddToTagLog(std::vector<RfidOperation> const& operations,
                     std::vector<RfidReadResponse> const& responses) override;
    std::string TakeTagLog() override { return std::exchange(tagLog_, {}); }

private:
    unsigned PagesOfCurrentJob() const;

    ZPLProcessorInterface& model_;
    std::shared_ptr<StringProperty> formatPrefix_;
    std::shared_ptr<StringProperty> controlPrefix_;
    std::shared_ptr<StringProperty> delimiter_;
    Scripting::Dpi printerDpi_;
    Scripting::Dpi designDpi_;
    std::shared_ptr<Clock const> clock_;
    Requests requests_;
    std::string tagLog_;
    mutable std::string jobPath_;  // of the job whose pages were counted last
    mutable unsigned jobPages_ = 0;
    std::shared_ptr<PrinterFeatureCheckerInterface const> checker_;
};
