#include "frontend/context/ContextProcessor.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <stdexcept>

#include "foundation/Files.h"
#include "foundation/Log.h"
#include "frontend/context/ObjectStore.h"
#include "frontend/stream/ZplTokenizer.h"

namespace {

/// The commands of a stored format, no more of them than can be recalled.
PackedCommands Tokenize(std::string_view content) {
    // Stored formats are written with these characters, whatever the session has changed its own to.
    constexpr char FormatPrefix = '^';
    constexpr char ControlPrefix = '~';
    constexpr char Delimiter = ',';

    PackedCommands commands;
    ZplTokenizer tokenizer;
    std::size_t position = 0;
    while (position < content.size() && commands.size() <= FormatCommands::MostRecalledCommands) {
        auto [encoding, command] = tokenizer.TokenizeString(content, position, FormatPrefix, ControlPrefix, Delimiter,
                                                            true, Encoding::SingleByte);
        if (!command) break;
        if (command->command.empty() || command->isOverlong) continue;
        commands.Append(*command);
    }
    return commands;
}

/// The commands of the stored format at `path`, which holds `content`. A batch recalls one format for each of its
/// labels; they share it as long as one of them waits to be drawn. What has the same content is the same for all, so
/// that all sessions of the process may share it too.
std::shared_ptr<PackedCommands const> ReadStoredFormat(std::filesystem::path const& path, std::string content) {
    struct Recalled {
        std::string content;
        PackedCommands commands;
    };
    static std::mutex mutex;
    static std::map<std::filesystem::path, std::weak_ptr<Recalled const>> recalled;
    std::unique_lock lock(mutex);
    auto found = recalled[path].lock();
    lock.unlock();
    if (!found || found->content != content) {
        auto commands = Tokenize(content);
        found = std::make_shared<Recalled const>(Recalled{std::move(content), std::move(commands)});
        lock.lock();
        std::erase_if(recalled, [](auto const& entry) { return entry.second.expired(); });
        recalled[path] = found;
    }
    return {found, &found->commands};
}

}  // namespace

ContextProcessor::ContextProcessor(std::filesystem::path formatsFolder) : formatsFolder_(std::move(formatsFolder)) {}

Context& ContextProcessor::CreateContext(std::string const& name) {
    contextStack_.push_back(name);
    if (Context* const existing = FindOnStack(name)) return *existing;
    return contexts_.emplace_back(name);
}

Context* ContextProcessor::GetContext(std::string const& name) {
    return const_cast<Context*>(std::as_const(*this).GetContext(name));
}

Context const* ContextProcessor::GetContext(std::string const& name) const {
    if (Context const* const found = FindOnStack(name)) return found;
    return systemContext_ && systemContext_->GetContextName() == name ? systemContext_.get() : nullptr;
}

Context& ContextProcessor::GetCurrentContext() {
    if (contextStack_.empty()) return *systemContext_;
    if (StandsInOrder()) return contexts_.back();
    Context* const context = FindOnStack(contextStack_.back());
    if (!context) throw std::out_of_range("a context that has been popped");
    return *context;
}

void ContextProcessor::PopCurrentContext() {
    if (contextStack_.empty() || contexts_.empty()) return;
    std::erase_if(contexts_,
                  [this](Context const& context) { return context.GetContextName() == contextStack_.back(); });
    contextStack_.pop_back();
}

void ContextProcessor::ClearContext(std::string const& name) {
    if (Context* context = GetContext(name)) context->Clear();
}

void ContextProcessor::BeginFormat() {
    contextStack_.clear();
    contexts_.clear();
    for (auto const* name : {&FormatContext, &LabelContext, &ElementContext}) CreateContext(*name);
    StartFormat();
}

void ContextProcessor::StartFormat() {
    formatCommands_.Clear();
    formatComplete_ = false;
}

void ContextProcessor::RecallFormat(std::filesystem::path const& name, std::uint64_t length) {
    auto const path = formatsFolder_ / name;
    auto const stored = ReadStoredFormat(path, ReadRegularFile(ObjectFile(formatsFolder_, name)));
    ReportExcess(formatCommands_.AppendRecalled(stored, Log::Place(), length, name.string()));
}

void ContextProcessor::ReportExcess(char const* excess) const {
    // What stands outside all formats is never drawn, and nobody misses it.
    if (excess && FindOnStack(LabelContext))
        Log::Report(LogTopic::Dropped, "the format holds " + std::string(excess) + " and is dropped");
}

ContextProcessor ContextProcessor::DeepClone() const {
    ContextProcessor clone(*this);
    if (systemContext_) clone.systemContext_ = std::make_shared<Context>(*systemContext_);
    return clone;
}

Context::ContextValue const* ContextProcessor::FindValue(std::uint64_t keyId, std::type_info const& type) const {
    if (!StandsInOrder()) return FindValueByNames(keyId, type);
    for (auto const& context : contexts_) {
        if (auto const* value = context.FindValue(keyId, type)) return value;
    }
    return systemContext_ ? systemContext_->FindValue(keyId, type) : nullptr;
}

Context::ContextValue const* ContextProcessor::FindValueByNames(std::uint64_t keyId, std::type_info const& type) const {
    for (auto const& name : contextStack_) {
        Context const* const context = FindOnStack(name);
        if (!context) continue;
        if (auto const* value = context->FindValue(keyId, type)) return value;
    }
    return systemContext_ ? systemContext_->FindValue(keyId, type) : nullptr;
}

void ContextProcessor::EraseBefore(Context const& context, std::uint64_t keyId) {
    if (StandsInOrder()) {
        for (auto& earlier : contexts_) {
            if (&earlier == &context) return;
            earlier.Erase(keyId);
        }
        return;
    }
    for (auto const& name : contextStack_) {
        Context* const earlier = FindOnStack(name);
        if (earlier == &context) return;
        if (earlier) earlier->Erase(keyId);
    }
}
