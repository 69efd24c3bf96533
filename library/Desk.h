#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "foundation/Clock.h"
#include "foundation/TemporaryFolder.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "jobhost/model/Findings.h"
#include "jobhost/model/PrinterContext.h"
#include "jobhost/model/Session.h"
#include "jobhost/model/ZPLProcessorInterface.h"
#include "library/DeskSettings.h"

/// What a printer gives to the streams that it is sent, within this process: the model with its properties, the
/// handlers, the fonts, and a store for formats and graphics that lives as long as the desk. One thread at a time;
/// other desks may work in other threads.
class Desk {
public:
    /// Throws std::runtime_error if symbols shall be read back and no reader is there.
    explicit Desk(DeskSettings const& settings);
    ~Desk();
    Desk(Desk const&) = delete;
    Desk& operator=(Desk const&) = delete;

    /// A stream begins, with nothing left over from the one before but what is stored.
    void StartStream();
    /// A session for the stream under way.
    std::unique_ptr<Zpl::Host::Session> MakeSession();
    /// Takes what streams that begin from now on send back to their sender; without a receiver it is dropped.
    void SetHostReceiver(std::function<void(std::string_view)> receiver);
    /// Takes what a page lacks of fonts; without a receiver it is reported like everything else.
    void SetFontReceiver(PrintEngine::Printing::TrueTypeCacheCreator::WarningReceiver receiver);
    /// What there is to tell of a report that comes now, on this thread. Of several reports of one subject, if it is
    /// not empty, the first that is told counts. The desk outlives it.
    Telling Report(LogTopic topic, std::string_view text, std::string_view subject, Findings::Format format);
    /// Makes fonts draw what the desk's own draw, for another thread that draws its labels.
    void SetUpFonts(PrintEngine::Printing::TrueTypeCacheCreator& fonts) const;
    /// Reads the symbols of labels back; null where nobody asks for that.
    std::shared_ptr<ZplCore::SymbolReader const> const& Reader() const { return reader_; }
    ZPLProcessorInterface& Model() { return *model_; }
    /// The printer of the stream under way.
    PrinterContext const& Printer() const { return *printerContext_; }
    PrinterContext& Printer() { return *printerContext_; }
    std::shared_ptr<Clock const> const& ClockOfPrinter() const { return clock_; }
    /// Where formats and graphics that streams store are kept.
    std::filesystem::path const& FormatsFolder() const { return machine_.formatsFolder; }

private:
    std::string FontSettings() const;

    std::optional<TemporaryFolder> storage_;
    MachineSettings machine_;
    std::shared_ptr<ZPLProcessorInterface> model_;
    std::unique_ptr<PrintEngine::Printing::TrueTypeCacheCreator> fonts_;
    bool fontsLackSomething_ = false;  ///< and have told so
    std::set<std::string> toldSubjects_;
    CommandHandlerPool handlers_;
    std::vector<std::pair<std::string, std::string>> fontFiles_;  ///< font letter or object name, and file
    std::shared_ptr<Clock const> clock_;
    Scripting::Dpi printerDpi_;
    Scripting::Dpi designDpi_;
    std::shared_ptr<ZplCore::SymbolReader const> reader_;
    std::function<void(std::string_view)> hostReceiver_;
    std::shared_ptr<Context> systemContext_;
    std::shared_ptr<PrinterContext> printerContext_;
};
