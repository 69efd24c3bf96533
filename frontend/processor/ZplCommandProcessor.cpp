#include "frontend/processor/ZplCommandProcessor.h"

#include <algorithm>

#include "Scripting/GraphicContext.h"
#include "Scripting/PrinterContextInterface.h"
#include "fields/map/FieldMap.h"
#include "foundation/Log.h"
#include "frontend/context/CharacterSets.h"
#include "frontend/context/ObjectName.h"
#include "frontend/context/ObjectStore.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ZplParse.h"
#include "propertybus/Property.h"

namespace {

constexpr std::size_t LongestMissingList = 8 * 1024UL;

bool PrefixFits(SyntacticType syntax, bool isControl) {
    return syntax == SyntacticType::Either || (syntax == SyntacticType::Control) == isControl;
}

/// Whatever the session's characters are: this is for people.
std::string Name(ZplCommand const& command) { return (command.isControl ? '~' : '^') + command.command; }

/// Whether data hold what parts the commands of a stored format: a stream with other characters may send that. Raw
/// pictures are counted, and may hold anything.
bool HoldsPrefixes(ZplCommand const& command) {
    bool const isCounted = command.command == "GF" && ToAsciiUpper(ZplParse<char>(command, 0).ValueOr(0)) == 'B';
    return !isCounted && std::any_of(command.parameters.begin(), command.parameters.end(),
                                     [](std::string_view text) { return text.find_first_of("^~") != text.npos; });
}

}  // namespace

ZplCommandProcessor::ZplCommandProcessor(CommandHandlerPool const& handlerPool, std::filesystem::path formatsFolder)
    : handlerPool_(handlerPool), contextProcessor_(std::move(formatsFolder)) {}

void ZplCommandProcessor::SetPrinterContext(std::shared_ptr<Scripting::PrinterContextInterface> context) {
    contextProcessor_.SetPrinterContext(std::move(context));
}

void ZplCommandProcessor::SetGraphicContext(std::shared_ptr<Scripting::GraphicContext> context) {
    contextProcessor_.SetGraphicContext(std::move(context));
}

void ZplCommandProcessor::SetSystemContext(std::shared_ptr<Context> context) {
    contextProcessor_.SetSystemContext(std::move(context));
}

ZplCommandProcessor::ProcessResult ZplCommandProcessor::ProcessString(std::string_view input, bool controlCommandsOnly,
                                                                      bool flushAtEnd) {
    if (input.empty()) return {};
    return ReadOn(input, controlCommandsOnly, flushAtEnd);
}

ZplCommandProcessor::ProcessResult ZplCommandProcessor::ProcessOpenCommand() { return ReadOn({}, false, true); }

/// An empty `input` gives the command that came with the input before, if `flushAtEnd` is set.
ZplCommandProcessor::ProcessResult ZplCommandProcessor::ReadOn(std::string_view input, bool controlCommandsOnly,
                                                               bool flushAtEnd) {
    ProcessResult result;
    // Who goes on with the stream has drawn the label that came last, or draws it anew.
    replay_.reset();
    std::size_t position = 0;
    do {
        if (!IsInFormat()) formatOffset_.reset();
        auto const command = NextCommand(input, position, flushAtEnd);
        if (!command) break;

        CommandHandler* const handler = handlerPool_.GetCommandHandler(command->command);
        if (!handler || !PrefixFits(handler->GetSyntacticType(), command->isControl)) {
            UpdateMissingCommands(command->command, command->isControl);
            if (unknownCommandObserver_) unknownCommandObserver_(*command, tokenizer_.CommandOffset());
            result.allCommandsKnown = false;
            continue;
        }
        Log::SetPlace(command->offset);
        if (command->isOverlong) {
            Log::Report(LogTopic::Limit, Name(*command) + " takes more than " +
                                             std::to_string(ZplCommand::LongestParameters >> 20) +
                                             " MiB and is left out");
            continue;
        }
        if (command->command == "XA") {
            formatOffset_ = command->offset;
            isLost_ = false;
            characterSet_.reset();
        }
        RunOrRecord(*handler, *command, controlCommandsOnly);
        // Without a format the flag stays set and nothing happens: that is how a stray end is ignored.
        if (contextProcessor_.IsFormatComplete() && contextProcessor_.GetContext(ContextProcessor::FormatContext)) {
            isFinishing_ = true;
            FinishFormat(result);
            isFinishing_ = false;
        }
    } while (position < input.size() && !result.label);
    result.remaining = input.substr(position);
    return result;
}

ZplCommandProcessor::StreamRest ZplCommandProcessor::TakeRest() {
    if (isFinishing_ && DrawsFormat()) KeepCharacterSet();
    return {std::move(tokenizer_),
            contextProcessor_.at(ZplContextKeys::CodePageConverter).GetEncoding(),
            isFinishing_ || IsInFormat(),
            !isFinishing_ && IsInFormat(),
            DrawsFormat(),
            std::move(characterSet_)};
}

void ZplCommandProcessor::GoOnWith(StreamRest rest) {
    tokenizer_ = std::move(rest.tokenizer);
    (*contextProcessor_.GetSystemContext())[ZplContextKeys::CodePageConverter].SetEncoding(rest.encoding);
    if (!rest.isInFormat) return;
    contextProcessor_.BeginFormat();
    isLost_ = true;
    characterSet_ = std::move(rest.characterSet);
    if (!rest.isDrawn)
        contextProcessor_.set(ContextProcessor::FormatContext, ZplContextKeys::CancelCurrentFormat, true);
}

bool ZplCommandProcessor::DrawsFormat() const {
    return contextProcessor_.at(ZplContextKeys::SavedFormatPath).empty() &&
           !contextProcessor_.at(ZplContextKeys::CancelCurrentFormat);
}

void ZplCommandProcessor::DropFormat() {
    if (DrawsFormat()) KeepCharacterSet();
    contextProcessor_.ClearFormatCommands();
    for (int i = 0; i < 3; ++i) contextProcessor_.PopCurrentContext();
    contextProcessor_.ResetFormatComplete();
}

/// How the stream is read behind a format does not depend on what became of its label: the set that it names counts
/// from its end on also if the label is dropped. So whoever only follows a stream knows where its commands stand.
void ZplCommandProcessor::KeepCharacterSet() {
    if (!characterSet_) return;
    try {
        RunCommand(*handlerPool_.GetCommandHandler(characterSet_->command), *characterSet_, contextProcessor_);
    } catch (std::exception const&) {
        // A number behind the set; the sender is told of what came first.
    }
}

void ZplCommandProcessor::ForgetByteOrderMark() {
    auto& converter = (*contextProcessor_.GetSystemContext())[ZplContextKeys::CodePageConverter];
    converter.SetEncoding(converter.EncodingOfCodePage());
}

std::unique_ptr<ZplCommand> ZplCommandProcessor::NextCommand(std::string_view input, std::size_t& position,
                                                             bool flushAtEnd) {
    // Asked for anew each time: the command before may have changed the characters or the character set.
    auto& converter = (*contextProcessor_.GetSystemContext())[ZplContextKeys::CodePageConverter];
    auto const& printer = *contextProcessor_.GetPrinterContext();
    try {
        auto [encoding, command] =
            tokenizer_.TokenizeString(input, position, printer.FormatPrefix(), printer.ControlPrefix(),
                                      printer.Delimiter(), flushAtEnd, converter.GetEncoding());
        converter.SetEncoding(encoding);
        return std::move(command);
    } catch (std::exception const&) {
        // There is no memory for what the command holds so far: it goes.
        auto const read = tokenizer_.ConsumedBytes();
        tokenizer_ = ZplTokenizer();
        tokenizer_.StartAt(read);
        throw;
    }
}

void ZplCommandProcessor::RunOrRecord(CommandHandler& handler, ZplCommand const& command, bool controlCommandsOnly) {
    switch (handler.GetProcessingType()) {
        case ProcessingType::Deferred:
            if (!controlCommandsOnly && !contextProcessor_.IsFormatComplete()) {
                contextProcessor_.AddFormatCommand(command);
                if (command.command == "CI" && FindNamedCharacterSet(command)) characterSet_ = command;
            }
            return;
        case ProcessingType::ImmediateIfControl:
            if (!command.isControl) {
                if (!contextProcessor_.IsFormatComplete()) contextProcessor_.AddFormatCommand(command);
                return;
            }
            [[fallthrough]];
        case ProcessingType::Immediate:
            RunCommand(handler, command, contextProcessor_);
            if (handler.IsAdditonalSaveType()) contextProcessor_.AddFormatCommand(command, true);
            return;
    }
}

void ZplCommandProcessor::FinishFormat(ProcessResult& result) {
    auto const popTwice = [this] {
        contextProcessor_.PopCurrentContext();
        contextProcessor_.PopCurrentContext();
        contextProcessor_.ResetFormatComplete();
    };
    if (isLost_ || contextProcessor_.GetFormatCommands().IsRefused()) {
        DropFormat();
        return;
    }
    // A copy: the context that holds the path is about to go.
    if (std::string const path = contextProcessor_.at(ZplContextKeys::SavedFormatPath); !path.empty()) {
        SaveFormatCommands(path);
        contextProcessor_.ClearContext(ContextProcessor::ElementContext);
        popTwice();
        return;
    }
    if (contextProcessor_.at(ZplContextKeys::CancelCurrentFormat)) {
        contextProcessor_.ClearFormatCommands();
        popTwice();
        return;
    }

    Zpl::Label label = ProcessLabelCommands();
    popTwice();
    // They are the label's from here on, which may be drawn by another thread.
    contextProcessor_.ClearFormatCommands();
    // The clone travels to the job; the first replay uses the original up.
    Zpl::Label clone = label.DeepClone();
    std::optional<std::string> const text = label.ProcessLabel(0, false);
    result.hasRfidOperations = label.HasRfidOperations();
    clone.SetRfidOperations(label.GetRfidOperations());
    // Behind the first replay, which has brought the format's own settings into the system context.
    clone.Freeze();
    bool const isPrinted = (result.hasRfidOperations || text) && label.ShouldPrint();
    if (!isPrinted || label.HasImageSavePath()) label.JudgeLeft();
    if (text && label.HasImageSavePath()) label.RenderLabelToFile();
    if (isPrinted) {
        // The page that stores itself as a picture may recall it.
        replay_ = label.HasImageSavePath() ? nullptr : label.TakeReplay();
        if (!replay_) label.JudgeLeft();
        clone.GoOnFrom(replay_);
        result.label.emplace(text.value_or(std::string()), std::move(clone));
    } else {
        // No page will be printed whose end brings the answers.
        label.SendEndOfFormatNetworkResponses();
    }
}

void ZplCommandProcessor::ProcessControlCommands() {
    // A handler may add to the recorded list; the run is over the list as it stands now.
    FormatCommands const commands = contextProcessor_.GetFormatCommands();
    if (!commands.MayHoldImmediate()) return;
    for (auto const& command : commands) {
        CommandHandler* const handler = handlerPool_.GetCommandHandler(command.command);
        // What a stored format holds of these came there by field data in other characters; a format in a format has no
        // meaning, and would grow without end.
        bool const shapesFormats =
            command.command == "XA" || command.command == "XZ" || command.command == "XF" || command.command == "DF";
        Log::SetPlace(command.offset);
        if (handler && !shapesFormats && handler->GetProcessingType() == ProcessingType::Immediate)
            RunCommand(*handler, command, contextProcessor_);
    }
}

Zpl::Label ZplCommandProcessor::ProcessLabelCommands() {
    ProcessControlCommands();
    // Frozen with the rest of the state, so that all copies show one time, whenever they are drawn.
    contextProcessor_.set(
        ContextProcessor::FormatContext, ZplContextKeys::TimeAtRender,
        contextProcessor_.GetPrinterContext()->Now() + contextProcessor_.at(ZplContextKeys::ClockAdjustment));
    contextProcessor_.set(ContextProcessor::FormatContext, ZplContextKeys::SharedFormatMemory,
                          std::make_shared<ZplContextKeys::FormatMemory>());
    Zpl::Label label(contextProcessor_, handlerPool_);
    contextProcessor_.PopCurrentContext();
    IncrementLifetimeScriptCount(label.Quantity());
    return label;
}

void ZplCommandProcessor::SaveFormatCommands(std::string const& path) {
    // The path is that of an object: device folder and file name.
    std::filesystem::path const object(path);
    auto const name =
        ObjectName::Parse(object.parent_path().string() + ":" + object.filename().string(), 'R', "", "ZPL");
    if (!name) return;
    auto const& commands = contextProcessor_.GetFormatCommands();
    if (commands.Bytes() > MaximumStoredBytes) {
        Log::Report(LogTopic::Limit, "object " + name->Text() + " is not stored: it is larger than its device");
        return;
    }
    std::string content;
    auto const& map = contextProcessor_.GetFieldMap();
    bool const notesSources = map && map->WantsDetails();
    std::vector<ZplCore::StoredCommand> sources;
    for (auto const& command : commands) {
        if (notesSources && command.offset) sources.push_back({content.size(), {*command.offset, command.length}});
        if (HoldsPrefixes(command)) {
            Log::Report(LogTopic::Data, "data of ^" + command.command + " hold ^ or ~, which begin a command when " +
                                            path + " is recalled");
        }
        content += '^' + command.command + command.Joined(0, ',');
    }
    StoreObject(contextProcessor_.FormatsFolder(), *name, content);
    if (notesSources) map->Sources().Note(name->Path().string(), std::move(sources));
}

void ZplCommandProcessor::LoadTrueTypeFonts() {
    auto const& target = contextProcessor_.GetGraphicContext();
    if (target) contextProcessor_.GetSystemContext()->Set(ZplContextKeys::TrueTypeFonts, target->GetFontFileNames());
}

void ZplCommandProcessor::UpdateMissingCommands(std::string const& command, bool isControl) {
    if (!missingZplCommands_) return;
    // Whatever the session's characters are: the list is read by people.
    std::string const entry = (isControl ? '~' : '^') + command;
    std::string missing = missingZplCommands_->Get();
    // A stream of garbage can hold any number of different letters: the list ends at a length that a person can read.
    if (missing.size() > LongestMissingList || missing.find(entry) != std::string::npos) return;
    if (!missing.empty()) missing += ',';
    missingZplCommands_->Set(missing + entry);
}

void ZplCommandProcessor::IncrementLifetimeScriptCount(unsigned count) const {
    if (lifetimeZplScriptCount_) lifetimeZplScriptCount_->Set(lifetimeZplScriptCount_->Get() + count);
}
