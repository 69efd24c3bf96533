#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/stream/ZplTokenizer.h"

struct HostQuestion;

/// What outlasts a stream of what its commands set: how the next one is read.
struct StreamState {
    char formatPrefix = '^';
    char controlPrefix = '~';
    char delimiter = ',';
    Encoding encoding = Encoding::SingleByte;

    friend bool operator==(StreamState const&, StreamState const&) = default;
};

/// Reads a print stream beside the host, by the same tokenizer and the same rules, to know where it may be cut: never
/// inside a format, nor inside a command. Notices the questions that hosts wait for as soon as their letters are there.
/// What a recalled format sets it does not see. Offsets are bytes since the stream began.
class StreamWatch {
public:
    struct Question {
        enum class Kind {
            Host,     ///< the interpreter answers it
            Door,     ///< the row tells the answer
            Line,     ///< `! U1 ...`: a question by name
            Foreign,  ///< a line with which another label language begins
        };
        Kind kind;
        HostQuestion const* row = nullptr;
        std::string text;          ///< the parameter, or the line
        std::uint64_t begin = 0;   ///< of its prefix or its line
        std::uint64_t end = 0;     ///< what follows does not belong to it
        bool standsAlone = false;  ///< between commands: nothing would be missing without it
        StreamState state;         ///< in which it was read
    };
    struct Progress {
        std::size_t read = 0;  ///< bytes
        std::optional<Question> question;
    };

    explicit StreamWatch(StreamState const& start);

    /// Reads on in the stream, to the end of `bytes` or behind the next question.
    Progress Read(std::string_view bytes);

    /// How far the stream, as far as it has been read, can be handed over so that what follows is a stream of its own.
    std::uint64_t SafeCut() const;
    /// What its commands have set so far, and would outlast it.
    StreamState const& State() const { return state_; }
    /// With which the stream behind that place begins.
    StreamState StateAtCut() const { return inFormat_ ? stateAtFormat_ : state_; }
    bool InFormat() const { return inFormat_ || IsOpen("XA"); }
    /// Whether the stream breaks off in the letters of a command or in a question by name.
    bool InLetters() const;
    /// Whether it breaks off in a command that brings data along, which may take its time.
    bool InDownload() const;
    /// Bytes of the format that is open, or else of the command.
    std::uint64_t OpenBytes() const;
    std::uint64_t Formats() const { return formats_; }
    /// Of these, those that hold more than questions and comments.
    std::uint64_t Labels() const { return labels_; }
    /// Whether there is anything for the host to read.
    bool HasCommands() const;
    /// Whether bytes have come that are no blanks, but among them neither prefix.
    bool IsNoise() const { return hasText_ && !hasPrefix_; }

private:
    bool IsOpen(std::string_view format) const;
    bool AsksByName() const;
    std::optional<Question> ReadText(std::string_view bytes, std::size_t& position);
    std::optional<Question> EndLine();
    std::optional<Question> ReadNameQuestion(char byte);
    std::size_t PlainLength(std::string_view text) const;
    std::unique_ptr<ZplCommand> Tokenize(std::string_view bytes, std::size_t& position);
    std::optional<Question> QuestionOf(std::string_view letters, bool isControl, std::string_view parameter,
                                       std::uint64_t offset, bool isWhole);
    bool MayBeQuestion() const;
    std::optional<Question> OpenQuestion();
    void Note(ZplCommand const& command);
    void NoteFormat(ZplCommand const& command);
    void EndFormat();

    ZplTokenizer tokenizer_;
    StreamState state_;
    Encoding encoding_;
    bool inFormat_ = false;
    bool isReplayed_ = false;  // the format is drawn at its end, and what it sets counts then
    std::optional<Encoding> encodingAtEnd_;
    std::uint64_t formatStart_ = 0;
    StreamState stateAtFormat_;
    std::uint64_t formats_ = 0;
    std::uint64_t labels_ = 0;
    bool mayDraw_ = false;  // the format, as far as it has been read
    bool hasText_ = false;
    bool hasPrefix_ = false;
    bool hasCommands_ = false;
    std::string line_;           // between formats: how the line begins
    std::size_t heldBytes_ = 0;  // of a question by name: its end, that is perhaps the start of a label
    bool inQuotes_ = false;
    std::uint64_t lineStart_ = 0;
    std::optional<std::uint64_t> openedFromText_;  // the command that stands, or will, behind text between commands
    std::optional<std::uint64_t> lastQuestion_;
};
