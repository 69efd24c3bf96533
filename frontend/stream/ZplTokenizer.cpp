#include "frontend/stream/ZplTokenizer.h"

#include <algorithm>

#include "foundation/Log.h"
#include "frontend/stream/Ascii.h"

namespace {

bool IsWide(Encoding encoding) { return encoding == Encoding::Utf16Le || encoding == Encoding::Utf16Be; }

bool IsBlank(char32_t character) {
    return character == U' ' || character == U'\t' || character == U'\r' || character == U'\n';
}

}  // namespace

std::pair<Encoding, std::unique_ptr<ZplCommand>> ZplTokenizer::TokenizeString(std::string_view input,
                                                                              std::size_t& position, char formatPrefix,
                                                                              char controlPrefix, char delimiter,
                                                                              bool flushAtEnd, Encoding encoding) {
    Syntax const syntax{static_cast<unsigned char>(formatPrefix), static_cast<unsigned char>(controlPrefix),
                        static_cast<unsigned char>(delimiter)};
    NoteEncoding(encoding);
    while (position < input.size()) {
        auto const start = position;
        bool const singleByte = encoding == Encoding::SingleByte;
        std::unique_ptr<ZplCommand> command;
        if (singleByte && machine_.IsInBinaryMode()) {
            command = ConsumeBinary(input, position);
        } else if (IsAscii(input[position]) && (singleByte || (encoding == Encoding::Utf8 && utf_.IsEmpty(encoding)))) {
            command = ConsumeAscii(input, position, syntax, encoding);
        } else {
            command = ConsumeByte(input[position++], syntax, encoding);
        }
        consumed_ += position - start;
        if (!command) continue;
        command->delimiter = delimiter;
        command->offset = deliveredOffset_;
        // What a prefix has ended, ends before that; all else, with the byte that ended it.
        bool const isEndedByPrefix = openOffset_ != deliveredOffset_;
        auto const end = isEndedByPrefix ? TrimmedEnd(input, position, openOffset_, encoding) : consumed_;
        command->length = end - deliveredOffset_;
        // A copy of a command that stays open may be what a chunk ends with.
        if (position == input.size()) chunkEnd_ = TrimmedEnd(input, position, consumed_, encoding);
        return {encoding, std::move(command)};
    }
    chunkEnd_ = TrimmedEnd(input, position, consumed_, encoding);
    auto flushed = flushAtEnd ? machine_.Flush() : nullptr;
    if (flushed) {
        deliveredOffset_ = openOffset_;
        flushed->delimiter = delimiter;
        flushed->offset = deliveredOffset_;
        flushed->length = chunkEnd_ - deliveredOffset_;
    }
    return {encoding, std::move(flushed)};
}

std::uint64_t ZplTokenizer::TrimmedEnd(std::string_view input, std::size_t position, std::uint64_t end,
                                       Encoding encoding) const {
    // Two bytes of one character may be in two chunks, and a stream may end amid one.
    if (IsWide(encoding)) return end == openOffset_ ? wideEndBeforePrefix_ : wideEnd_;
    std::uint64_t const start = consumed_ - position;
    // The chunk before may have ended amid the character that ends the command.
    if (end <= start) return std::min(chunkEnd_, end);
    auto at = static_cast<std::size_t>(end - start);
    while (at > 0 && IsBlank(static_cast<unsigned char>(input[at - 1]))) --at;
    return at == 0 ? chunkEnd_ : start + at;
}

namespace {

/// A mark that stands in front of a stream is a good custom; further on it is an accident, and all behind it is read in
/// another way.
void ReportMark(Encoding encoding, std::uint64_t lastByte) {
    std::uint64_t const length = encoding == Encoding::Utf8 ? 3 : 2;
    if (lastByte < length) return;
    Log::SetPlace(lastByte + 1 - length);
    Log::Report(LogTopic::Data, std::string("a byte order mark stands here: what follows is read as ") +
                                    (encoding == Encoding::Utf8      ? "UTF-8"
                                     : encoding == Encoding::Utf16Le ? "UTF-16, low byte first"
                                                                     : "UTF-16, high byte first"));
}

}  // namespace

void ZplTokenizer::NoteEncoding(Encoding encoding) {
    if (encoding == encoding_) return;
    encoding_ = encoding;
    wideEnd_ = consumed_;
}

std::unique_ptr<ZplCommand> ZplTokenizer::ConsumeByte(char byte, Syntax const& syntax, Encoding& encoding) {
    auto const result = utf_.Consume(byte, encoding, machine_.IsInBinaryMode());
    if (result.encoding != encoding) ReportMark(result.encoding, consumed_);
    encoding = result.encoding;
    NoteEncoding(encoding);
    if (!result.complete) return nullptr;
    auto const offset = consumed_ + 1 - result.bytesBack;
    auto command = ConsumeCharacter(result.character, offset, syntax, encoding);
    if (openOffset_ == offset) wideEndBeforePrefix_ = wideEnd_;
    if (!IsBlank(result.character)) wideEnd_ = consumed_ + 1;
    return command;
}

// A 7-bit byte ends no byte order mark, and is a character where no other bytes wait before it. So a run of them needs
// no decoding; only what the decoder holds afterwards has to be as if it had seen them.
std::unique_ptr<ZplCommand> ZplTokenizer::ConsumeAscii(std::string_view input, std::size_t& position,
                                                       Syntax const& syntax, Encoding encoding) {
    auto const start = position;
    std::unique_ptr<ZplCommand> command;
    while (!command && position < input.size() && IsAscii(input[position])) {
        // A run of raw bytes that starts here is not 7-bit text any more.
        if (machine_.IsInBinaryMode() && encoding == Encoding::SingleByte) break;
        position += machine_.ConsumePlainRun(input.substr(position), syntax.formatPrefix, syntax.controlPrefix,
                                             syntax.delimiter);
        if (position == input.size() || !IsAscii(input[position])) break;
        auto const offset = consumed_ + (position - start);
        command = ConsumeCharacter(static_cast<unsigned char>(input[position++]), offset, syntax, encoding);
    }
    utf_.SkipRun(input.substr(start, position - start), encoding);
    return command;
}

std::unique_ptr<ZplCommand> ZplTokenizer::ConsumeBinary(std::string_view input, std::size_t& position) {
    auto const run = input.substr(position, machine_.BinaryRemaining());
    position += run.size();
    utf_.SkipRun(run, Encoding::SingleByte);
    auto command = machine_.ConsumeBinaryRun(run);
    if (command) deliveredOffset_ = openOffset_;
    return command;
}

std::unique_ptr<ZplCommand> ZplTokenizer::ConsumeCharacter(char32_t character, std::uint64_t offset,
                                                           Syntax const& syntax, Encoding encoding) {
    // Asked before the machine moves: the prefix that opens a command completes the one before, which is delivered with
    // the place of its own prefix.
    bool const opens = !machine_.IsInBinaryMode() &&
                       (character == syntax.formatPrefix || character == syntax.controlPrefix) && character != U'\r' &&
                       character != U'\n';
    auto command = machine_.Consume(character, syntax.formatPrefix, syntax.controlPrefix, syntax.delimiter, encoding);
    if (command) deliveredOffset_ = openOffset_;
    if (opens) openOffset_ = offset;
    return command;
}
