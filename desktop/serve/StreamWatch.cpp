#include "desktop/serve/StreamWatch.h"

#include <algorithm>

#include "desktop/serve/HostAnswers.h"
#include "frontend/context/CharacterSets.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ZplParse.h"

namespace {

constexpr std::string_view NameQuestion = "! U1 ";
constexpr std::size_t LongestLine = 1024;

/// Whether a character may open or part commands.
bool IsUsable(char character) { return character >= ' ' && character <= '~'; }

}  // namespace

StreamWatch::StreamWatch(StreamState const& start) : state_(start), encoding_(start.encoding) {
    tokenizer_.KeepBeginnings();
}

StreamWatch::Progress StreamWatch::Read(std::string_view bytes) {
    std::size_t position = 0;
    while (position < bytes.size()) {
        if (auto question = ReadText(bytes, position)) return {position, std::move(question)};
        if (position == bytes.size()) break;
        // The text behind a question of its own may be the next question.
        auto const end = MayBeQuestion() ? position + 1 : bytes.size();
        auto const command = Tokenize(bytes.substr(0, end), position);
        if (!command) {
            if (auto question = OpenQuestion()) return {position, std::move(question)};
            continue;
        }
        std::uint64_t const offset = tokenizer_.CommandOffset();
        auto const text = std::find_if(command->parameters.begin(), command->parameters.end(),
                                       [](std::string_view parameter) { return !parameter.empty(); });
        auto question =
            QuestionOf(command->command, command->isControl,
                       text == command->parameters.end() ? std::string_view() : std::string_view(*text), offset, true);
        bool const isTakenOut = lastQuestion_ == offset && (!question || question->kind != Question::Kind::Host);
        if (!isTakenOut) hasCommands_ = true;
        Note(*command);
        if (question) return {position, std::move(question)};
    }
    return {position, OpenQuestion()};
}

bool StreamWatch::MayBeQuestion() const {
    auto const open = tokenizer_.Open();
    if (open.state == ZplTokenizerState::Idle) return openedFromText_ == tokenizer_.ConsumedBytes();
    if (openedFromText_ != open.offset || lastQuestion_ == open.offset) return false;
    auto const* const row = FindHostQuestion(open.letters, open.isControl);
    return open.state == ZplTokenizerState::Command || (row && row->answer);
}

/// A question is whole when its letters are there.
std::optional<StreamWatch::Question> StreamWatch::OpenQuestion() {
    auto const open = tokenizer_.Open();
    if (open.state != ZplTokenizerState::Parameters) return std::nullopt;
    auto question = QuestionOf(open.letters, open.isControl, open.parameter, open.offset, false);
    if (!question || question->kind != Question::Kind::Door || openedFromText_ != open.offset) return question;
    // It is taken out as if it had never been there, and what follows is text again.
    question->standsAlone = true;
    std::uint64_t const read = tokenizer_.ConsumedBytes();
    tokenizer_ = ZplTokenizer();
    tokenizer_.KeepBeginnings();
    tokenizer_.StartAt(read);
    return question;
}

std::unique_ptr<ZplCommand> StreamWatch::Tokenize(std::string_view bytes, std::size_t& position) {
    auto [encoding, command] = tokenizer_.TokenizeString(bytes, position, state_.formatPrefix, state_.controlPrefix,
                                                         state_.delimiter, false, encoding_);
    encoding_ = encoding;
    if (command || tokenizer_.Open().state != ZplTokenizerState::Idle) hasText_ = hasPrefix_ = true;
    return std::move(command);
}

/// A question by name is taken out of the stream, whatever it holds: for the tokenizer it is blanks. It ends with its
/// line, or where a label begins outside of quotes; then the tokenizer stands in the letters of that.
std::optional<StreamWatch::Question> StreamWatch::ReadNameQuestion(char byte) {
    std::string const start = {state_.formatPrefix, 'X', 'A'};
    auto const feed = [this](std::string_view text) {
        std::size_t read = 0;
        Tokenize(text, read);
    };
    if (!inQuotes_ && ToAsciiUpper(byte) == start[heldBytes_]) {
        if (++heldBytes_ < start.size()) return std::nullopt;
        heldBytes_ = 0;
        auto question = EndLine();
        openedFromText_ = tokenizer_.ConsumedBytes();
        feed(start);
        return question;
    }
    std::string text = start.substr(0, std::exchange(heldBytes_, 0));
    bool const isEnd = byte == '\r' || byte == '\n';
    if (byte == state_.formatPrefix && !inQuotes_)
        heldBytes_ = 1;
    else if (!isEnd)
        text += byte;
    if (byte == '"') inQuotes_ = !inQuotes_;
    feed(std::string(text.size(), ' '));
    if (line_.size() < LongestLine) line_ += text;
    if (!isEnd) return std::nullopt;
    auto question = EndLine();
    feed(" ");
    return question;
}

/// What stands between commands outside of formats: hosts put questions by name there, a line each.
std::optional<StreamWatch::Question> StreamWatch::ReadText(std::string_view bytes, std::size_t& position) {
    auto const isText = [&] {
        return !inFormat_ && tokenizer_.Open().state == ZplTokenizerState::Idle &&
               (encoding_ == Encoding::SingleByte || encoding_ == Encoding::Utf8);
    };
    while (position < bytes.size() && isText()) {
        char const byte = bytes[position];
        if (AsksByName()) {
            ++position;
            if (auto question = ReadNameQuestion(byte)) return question;
            continue;
        }
        if (byte == state_.formatPrefix || byte == state_.controlPrefix) {
            line_.clear();
            openedFromText_ = tokenizer_.ConsumedBytes();
            return std::nullopt;
        }
        std::optional<Question> question;
        bool const isBlank = byte == ' ' || byte == '\t' || byte == '\0';
        if (byte == '\r' || byte == '\n') {
            question = EndLine();
        } else if (!line_.empty() || !isBlank) {
            if (line_.empty()) {
                lineStart_ = tokenizer_.ConsumedBytes();
                inQuotes_ = false;
            }
            if (line_.size() < LongestLine) line_ += byte;
            hasText_ = true;
        }
        // The rest of other text is of no interest.
        auto const end = position + (question ? 1 : PlainLength(bytes.substr(position)));
        Tokenize(bytes.substr(0, end), position);
        if (question) return question;
    }
    return std::nullopt;
}

/// How much of `text` stands for the characters of a line that asks nothing; at least 1.
std::size_t StreamWatch::PlainLength(std::string_view text) const {
    if (line_.empty() || line_[0] == NameQuestion[0]) return 1;
    auto const end = std::find_if(text.begin(), text.end(), [this](char byte) {
        return byte == '\r' || byte == '\n' || byte == state_.formatPrefix || byte == state_.controlPrefix;
    });
    return std::max<std::size_t>(static_cast<std::size_t>(end - text.begin()), 1);
}

std::optional<StreamWatch::Question> StreamWatch::EndLine() {
    bool const asks = AsksByName();
    bool const isForeign = !asks && line_.size() > 2 && line_.starts_with("! ") &&
                           (ToAsciiUpper(line_[2]) == 'U' || IsAsciiDigit(line_[2]));
    std::string line = std::exchange(line_, {});
    if (!asks && !isForeign) return std::nullopt;
    hasPrefix_ = true;
    auto const kind = asks ? Question::Kind::Line : Question::Kind::Foreign;
    return Question{kind, nullptr, std::move(line), lineStart_, tokenizer_.ConsumedBytes(), true, state_};
}

std::optional<StreamWatch::Question> StreamWatch::QuestionOf(std::string_view letters, bool isControl,
                                                             std::string_view parameter, std::uint64_t offset,
                                                             bool isWhole) {
    auto const* const row = FindHostQuestion(letters, isControl);
    if (!row || lastQuestion_ == offset || (!isWhole && parameter.size() < row->parameterLetters)) return std::nullopt;
    lastQuestion_ = offset;
    Question question{row->answer ? Question::Kind::Door : Question::Kind::Host,
                      row,
                      std::string(parameter),
                      offset,
                      tokenizer_.ConsumedBytes(),
                      false,
                      state_};
    question.state.encoding = encoding_;
    return question;
}

void StreamWatch::Note(ZplCommand const& command) {
    auto const change = [&](char StreamState::*character, char first, char second) {
        auto const value = ZplParse<char>(command, 0);
        if (value && IsUsable(*value) && *value != first && *value != second) state_.*character = *value;
    };
    std::string const& letters = command.command;
    if (letters == "CC") change(&StreamState::formatPrefix, state_.controlPrefix, state_.delimiter);
    if (letters == "CT") change(&StreamState::controlPrefix, state_.formatPrefix, state_.delimiter);
    if (letters == "CD") change(&StreamState::delimiter, state_.formatPrefix, state_.controlPrefix);
    if (letters == "JR" && command.isControl) {
        state_ = {};
        encoding_ = state_.encoding;
        isReplayed_ = false;
    }
    if (letters == "JX" && command.isControl) isReplayed_ = false;
    if (!command.isControl) NoteFormat(command);
}

void StreamWatch::NoteFormat(ZplCommand const& command) {
    std::string const& letters = command.command;
    if (letters == "XA") {
        if (!inFormat_) {
            formatStart_ = tokenizer_.CommandOffset();
            stateAtFormat_ = state_;
        }
        inFormat_ = isReplayed_ = true;
        mayDraw_ = false;
        encodingAtEnd_.reset();
    }
    // It is stored, and drawn when it is recalled.
    if (letters == "DF") isReplayed_ = false;
    auto const* const set = letters == "CI" && inFormat_ ? FindNamedCharacterSet(command) : nullptr;
    if (set) encodingAtEnd_ = set->encoding;
    if (letters == "XZ" && inFormat_) return EndFormat();
    bool const isSilent = letters == "XA" || letters == "FX" || FindHostQuestion(letters, false);
    mayDraw_ = mayDraw_ || !isSilent;
}

void StreamWatch::EndFormat() {
    inFormat_ = false;
    ++formats_;
    if (mayDraw_) ++labels_;
    if (isReplayed_ && encodingAtEnd_) encoding_ = state_.encoding = *encodingAtEnd_;
}

std::uint64_t StreamWatch::SafeCut() const {
    if (inFormat_) return formatStart_;
    auto const open = tokenizer_.Open();
    if (open.state != ZplTokenizerState::Idle) return open.offset;
    bool const mayAsk = AsksByName() || NameQuestion.starts_with(ToAsciiUpper(line_));
    if (!line_.empty() && mayAsk) return lineStart_;
    return tokenizer_.ConsumedBytes() - tokenizer_.UnfinishedBytes(encoding_);
}

bool StreamWatch::IsOpen(std::string_view format) const {
    auto const open = tokenizer_.Open();
    return open.state == ZplTokenizerState::Parameters && !open.isControl && open.letters == format;
}

bool StreamWatch::AsksByName() const {
    return line_.size() >= NameQuestion.size() && ToAsciiUpper(line_.substr(0, NameQuestion.size())) == NameQuestion;
}

bool StreamWatch::InLetters() const {
    auto const state = tokenizer_.Open().state;
    return state == ZplTokenizerState::Command || (state == ZplTokenizerState::Idle && !inFormat_ && AsksByName());
}

bool StreamWatch::InDownload() const {
    auto const open = tokenizer_.Open();
    return open.state == ZplTokenizerState::Binary ||
           (open.state == ZplTokenizerState::Parameters && open.letters.starts_with('D'));
}

std::uint64_t StreamWatch::OpenBytes() const {
    auto const open = tokenizer_.Open();
    if (inFormat_) return tokenizer_.ConsumedBytes() - formatStart_;
    return open.state == ZplTokenizerState::Idle ? 0 : tokenizer_.ConsumedBytes() - open.offset;
}

bool StreamWatch::HasCommands() const {
    auto const open = tokenizer_.Open();
    return hasCommands_ || (open.state != ZplTokenizerState::Idle && lastQuestion_ != open.offset);
}
