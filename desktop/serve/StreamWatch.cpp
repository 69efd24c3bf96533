#include "desktop/serve/StreamWatch.h"

#include <stdexcept>

void StreamWatch::Append(std::string_view bytes) {
    constexpr std::size_t Letters = 3;
    for (std::size_t position = 0; position < bytes.size();) {
        auto [encoding, command] =
            tokenizer_.TokenizeString(bytes, position, formatPrefix_, controlPrefix_, delimiter_, false, encoding_);
        encoding_ = encoding;
        if (command) Note(*command);
    }
    hasText_ = hasText_ || bytes.find_first_not_of(std::string_view(" \t\r\n\0", 5)) != std::string_view::npos;
    char const prefixes[] = {formatPrefix_, controlPrefix_};
    if (auto const last = bytes.find_last_of({prefixes, 2}); last != std::string_view::npos) {
        tail_ = bytes.substr(last, Letters);
        hasPrefix_ = true;
    } else if (tail_.size() < Letters && !tail_.empty()) {
        tail_ += bytes.substr(0, Letters - tail_.size());
    }
}

void StreamWatch::Note(ZplCommand const& command) {
    auto const change = [&](char& character) {
        if (!command.parameters.empty() && !command.parameters[0].empty()) character = command.parameters[0][0];
    };
    if (command.command == "XA") inFormat_ = true;
    if (command.command == "CC") change(formatPrefix_);
    if (command.command == "CT") change(controlPrefix_);
    if (command.command == "CD") change(delimiter_);
    if (command.command != "XZ") return;
    inFormat_ = false;
    lastFormatEnd_ = tokenizer_.ConsumedBytes();
}

bool StreamWatch::InLetters() const { return !tail_.empty() && tail_.size() < 3; }

bool StreamWatch::InDownload() const { return tail_.size() == 3 && (tail_[1] == 'D' || tail_[1] == 'd'); }
