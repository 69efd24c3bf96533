#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `~DG`: stores a picture under an object name.
class DownloadGraphicsHandler : public HandlerFor<CommandId("DG"), SyntacticType::Control, ProcessingType::Immediate> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^HY`: sends a stored picture to the host, once, when the format has been printed.
class UploadGraphicsHandler : public HandlerFor<CommandId("HY")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^IS`: saves the label as a picture, and says whether it is printed too.
class ImageSaveHandler : public HandlerFor<CommandId("IS")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^XG`: draws a stored picture, enlarged. `^IM`: draws one as it is.
class RecallGraphicHandler : public CommandHandler {
public:
    enum class Mode { Enlarged = 0, Plain = 1 };

    RecallGraphicHandler(std::uint64_t id, Mode mode) : id_(id), mode_(mode) {}
    std::uint64_t GetCommandId() const override { return id_; }
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;

private:
    std::uint64_t id_;
    Mode mode_;
};

void AddStoredGraphicHandlers(CommandHandlerPool& pool);
