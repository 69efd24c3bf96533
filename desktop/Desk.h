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
#include "desktop/CommandLine.h"
#include "foundation/Clock.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "jobhost/model/Findings.h"
#include "jobhost/model/PrinterContext.h"
#include "jobhost/model/Session.h"
#include "jobhost/model/ZPLProcessorInterface.h"

class LabelDrawer;

/// A folder of a name of its own, which goes with all that is in it when the object does.
class TemporaryFolder {
public:
    /// Throws std::system_error if it cannot be made in `parent`.
    TemporaryFolder(std::filesystem::path const& parent, std::string_view prefix);
    ~TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    std::filesystem::path const& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The same of which only the name is made, one that nobody can guess and take. Most streams store nothing, and making
/// a folder and removing it takes a disk longer than drawing a label.
class TemporaryFolderName {
public:
    explicit TemporaryFolderName(std::filesystem::path const& parent);
    ~TemporaryFolderName();
    TemporaryFolderName(TemporaryFolderName const&) = delete;
    TemporaryFolderName& operator=(TemporaryFolderName const&) = delete;

    std::filesystem::path const& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// What a printer gives to the streams that it is sent, within this process: the model with its properties, the
/// handlers, the fonts, and a store for formats and graphics that lives as long as the desk. One thread at a time;
/// other desks may work in other threads.
class Desk {
public:
    explicit Desk(RenderOptions const& options);

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
    /// What another thread needs to draw the labels of sessions.
    std::unique_ptr<LabelDrawer> MakeDrawer(ZplCore::FieldMap::Detail detail);
    ZPLProcessorInterface& Model() { return *model_; }
    /// The printer of the stream under way.
    PrinterContext const& Printer() const { return *printerContext_; }
    /// Where formats and graphics that streams store are kept.
    std::filesystem::path const& FormatsFolder() const { return machine_.formatsFolder; }

private:
    void SetUpFonts(PrintEngine::Printing::TrueTypeCacheCreator& fonts) const;

    std::optional<TemporaryFolderName> storage_;
    MachineSettings machine_;
    std::shared_ptr<ZPLProcessorInterface> model_;
    PrintEngine::Printing::TrueTypeCacheCreator fonts_;
    std::set<std::string> toldSubjects_;
    CommandHandlerPool handlers_;
    std::vector<std::pair<std::string, std::string>> fontFiles_;  ///< font letter or object name, and file
    std::shared_ptr<Clock const> clock_;
    Scripting::Dpi printerDpi_;
    Scripting::Dpi designDpi_;
    std::function<void(std::string_view)> hostReceiver_;
    std::shared_ptr<Context> systemContext_;
    std::shared_ptr<PrinterContext> printerContext_;
};
