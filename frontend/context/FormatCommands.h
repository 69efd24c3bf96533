#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "frontend/stream/ZplCommand.h"

/// The recorded commands of a format. A finished label is copied several times and its commands never change any more,
/// so copies share one list until one of them is changed.
class FormatCommands {
public:
    void Append(ZplCommand const& command) {
        Own().push_back(command);
        bytes_ += command.command.size();
        for (auto const& parameter : command.parameters) bytes_ += parameter.size() + 1;
    }
    void Clear() {
        commands_.reset();
        bytes_ = 0;
    }

    /// What the commands take in a stream, about.
    std::size_t Bytes() const { return bytes_; }

    std::size_t size() const { return commands_ ? commands_->size() : 0; }
    bool empty() const { return size() == 0; }
    ZplCommand const& operator[](std::size_t index) const { return (*commands_)[index]; }
    auto begin() const { return List().begin(); }
    auto end() const { return List().end(); }

private:
    std::vector<ZplCommand> const& List() const {
        static std::vector<ZplCommand> const none;
        return commands_ ? *commands_ : none;
    }
    std::vector<ZplCommand>& Own() {
        if (!commands_) {
            commands_ = std::make_shared<std::vector<ZplCommand>>();
        } else if (commands_.use_count() > 1) {
            commands_ = std::make_shared<std::vector<ZplCommand>>(*commands_);
        }
        return *commands_;
    }

    std::shared_ptr<std::vector<ZplCommand>> commands_;
    std::size_t bytes_ = 0;
};
