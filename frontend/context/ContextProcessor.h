#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frontend/context/Context.h"
#include "frontend/context/FormatCommands.h"
#include "frontend/stream/ZplCommand.h"

namespace Scripting {
class GraphicContext;
class PrinterContextInterface;
}  // namespace Scripting

namespace ZplCore {
class FieldMap;
}  // namespace ZplCore

/// The state of a print stream: a stack of named contexts, the system context beneath them, the format recorded so
/// far, and the printer and drawing target to act on. A copy is a frozen state: it has contexts of its own, and shares
/// only the system context, the printer and the drawing target.
class ContextProcessor {
public:
    /// Survives all labels; not on the stack.
    static inline std::string const SystemContext = "System Context";
    /// From the start of a format to its end.
    static inline std::string const FormatContext = "Format Context";
    /// One label, cleared when a copy starts rendering.
    static inline std::string const LabelContext = "Label Context";
    /// One field, cleared when the field ends.
    static inline std::string const ElementContext = "Element Context";

    /// `formatsFolder`: where stored formats lie.
    explicit ContextProcessor(std::filesystem::path formatsFolder);

    /// Pushes `name` on the stack. A context of that name that exists already is given as it stands.
    Context& CreateContext(std::string const& name);
    /// The context of that name, also the system context; null if there is none.
    Context* GetContext(std::string const& name);
    Context const* GetContext(std::string const& name) const;
    /// The context on top of the stack; the system context if the stack is empty. Throws std::out_of_range if the
    /// context went with another entry of its name.
    Context& GetCurrentContext();
    /// Takes the top off the stack and destroys its context; nothing on an empty stack.
    void PopCurrentContext();
    /// Empties a context and leaves it on the stack; nothing if there is none of that name.
    void ClearContext(std::string const& name);

    /// Makes the contexts of a format anew, all empty, whatever stands on the stack, and starts the format.
    void BeginFormat();
    void StartFormat();
    void EndFormat() { formatComplete_ = true; }
    void ResetFormatComplete() { formatComplete_ = false; }
    bool IsFormatComplete() const { return formatComplete_; }
    FormatCommands const& GetFormatCommands() const { return formatCommands_; }
    void ClearFormatCommands() { formatCommands_.Clear(); }
    /// Appends a copy. A format that becomes too large is dropped, with a report.
    void AddFormatCommand(ZplCommand const& command, bool isImmediate = false) {
        ReportExcess(formatCommands_.Append(command, isImmediate));
    }
    /// Appends the commands of the stored format `name`, a path below the formats folder. A missing file adds nothing.
    /// `length`: of the command under way, which recalls it, in bytes.
    void RecallFormat(std::filesystem::path const& name, std::uint64_t length = 0);
    std::filesystem::path const& FormatsFolder() const { return formatsFolder_; }

    /// The value seen from here: from the oldest context on the stack to the newest, then the system context, then the
    /// key's default. Never creates an entry.
    template <typename T>
    T const& at(ContextKey<T> const& key) const;

    /// Sets a value in a context so that it is the one that `at` sees: the contexts searched earlier lose the key.
    /// Nothing happens if there is no context of that name.
    template <typename T>
    void set(std::string const& contextName, ContextKey<T> const& key, T value);

    /// The same for a context that a handler was given. One that is none of this processor's own is written directly.
    template <typename T>
    void set(Context& context, ContextKey<T> const& key, T value) {
        if (Owns(context)) EraseBefore(context, key.id);
        context.Set(key, std::move(value));
    }

    void SetCurrentLabelNumber(unsigned number) { currentLabelNumber_ = number; }
    unsigned CurrentLabelNumber() const { return currentLabelNumber_; }

    std::shared_ptr<Scripting::GraphicContext> const& GetGraphicContext() const { return graphicContext_; }
    void SetGraphicContext(std::shared_ptr<Scripting::GraphicContext> context) { graphicContext_ = std::move(context); }
    std::shared_ptr<Scripting::PrinterContextInterface> const& GetPrinterContext() const { return printerContext_; }
    void SetPrinterContext(std::shared_ptr<Scripting::PrinterContextInterface> context) {
        printerContext_ = std::move(context);
    }
    /// Where fields are noted as they are drawn; null where nobody asks. Shared by all copies, as the target is.
    std::shared_ptr<ZplCore::FieldMap> const& GetFieldMap() const { return fieldMap_; }
    void SetFieldMap(std::shared_ptr<ZplCore::FieldMap> map) { fieldMap_ = std::move(map); }
    std::shared_ptr<Context> const& GetSystemContext() const { return systemContext_; }
    void SetSystemContext(std::shared_ptr<Context> context) { systemContext_ = std::move(context); }

    /// A copy with a system context of its own, so that work on it cannot disturb the live stream.
    ContextProcessor DeepClone() const;

private:
    /// The context of that name among those of the stack, or null.
    Context const* FindOnStack(std::string const& name) const {
        for (auto const& context : contexts_) {
            if (context.GetContextName() == name) return &context;
        }
        return nullptr;
    }
    Context* FindOnStack(std::string const& name) {
        return const_cast<Context*>(std::as_const(*this).FindOnStack(name));
    }

    /// With every name on the stack once, the contexts stand in the order of the stack.
    bool StandsInOrder() const { return contexts_.size() == contextStack_.size(); }

    bool Owns(Context const& context) const {
        bool const onStack =
            !contexts_.empty() && &context >= contexts_.data() && &context < contexts_.data() + contexts_.size();
        return onStack || &context == systemContext_.get();
    }
    /// The value that `at` gives, or null where that is the default.
    Context::ContextValue const* FindValue(std::uint64_t keyId, std::type_info const& type) const;
    Context::ContextValue const* FindValueByNames(std::uint64_t keyId, std::type_info const& type) const;
    void ReportExcess(char const* excess) const;
    /// Erases a key from the contexts that are searched before `context`.
    void EraseBefore(Context const& context, std::uint64_t keyId);

    std::filesystem::path formatsFolder_;
    std::vector<std::string> contextStack_;  // oldest first
    /// A handful at most: they are found faster by comparing names than by hashing them. A reference to one holds until
    /// the next is created or popped.
    std::vector<Context> contexts_;
    std::shared_ptr<Scripting::GraphicContext> graphicContext_;
    std::shared_ptr<Scripting::PrinterContextInterface> printerContext_;
    std::shared_ptr<ZplCore::FieldMap> fieldMap_;
    std::shared_ptr<Context> systemContext_;
    FormatCommands formatCommands_;
    unsigned currentLabelNumber_ = 1;
    bool formatComplete_ = false;
};

template <typename T>
T const& ContextProcessor::at(ContextKey<T> const& key) const {
    Context::ContextValue const* const value = FindValue(key.id, typeid(T));
    return value ? static_cast<Context::ConcreteContextValue<T> const*>(value)->value : key.defaultValue;
}

template <typename T>
void ContextProcessor::set(std::string const& contextName, ContextKey<T> const& key, T value) {
    Context* const context = GetContext(contextName);
    if (!context) return;
    EraseBefore(*context, key.id);
    context->Set(key, std::move(value));
}
