#pragma once

#include <string>
#include <vector>

#include "Scripting/PrinterContextInterface.h"

/// A printer whose clock stands still and which writes down what is asked of it.
class FakePrinterContext : public Scripting::PrinterContextInterface {
public:
    explicit FakePrinterContext(unsigned printerDpi = 203, unsigned designDpi = 0)
        : printerDpi_(printerDpi), designDpi_(designDpi ? designDpi : printerDpi) {}

    char FormatPrefix() const override { return formatPrefix_; }
    char ControlPrefix() const override { return controlPrefix_; }
    char Delimiter() const override { return delimiter_; }
    void SetFormatPrefix(char character) override { formatPrefix_ = character; }
    void SetControlPrefix(char character) override { controlPrefix_ = character; }
    void SetDelimiter(char character) override { delimiter_ = character; }

    Scripting::Dpi PrinterDpi() const override { return Scripting::Dpi(printerDpi_); }
    Scripting::Dpi DesignDpi() const override { return Scripting::Dpi(designDpi_); }

    std::chrono::system_clock::time_point Now() const override { return now; }

    bool CutsAfterLabel() const override { return cutsAfterLabel; }
    std::optional<unsigned> CutInterval() const override { return cutInterval; }

    void CancelAll() override { requests.emplace_back("cancel"); }
    void Pause() override { requests.emplace_back("pause"); }
    void Start() override { requests.emplace_back("start"); }
    void Reset() override { requests.emplace_back("reset"); }

    void SendToHost(std::string_view data) override { sentToHost += data; }

    bool cutsAfterLabel = false;
    std::optional<unsigned> cutInterval;
    std::vector<std::string> requests;  ///< in the order they came
    std::string sentToHost;
    std::chrono::system_clock::time_point now = std::chrono::sys_days(std::chrono::year(2024) / 2 / 29);

private:
    unsigned printerDpi_;
    unsigned designDpi_;
    char formatPrefix_ = '^';
    char controlPrefix_ = '~';
    char delimiter_ = ',';
};
