#include "frontend/stream/ZplTokenizer.h"

#include "foundation/Log.h"
#include "frontend/stream/Ascii.h"

namespace {

constexpr std::string_view Blanks = " \t";

}  // namespace

std::pair<Encoding, std::unique_ptr<ZplCommand>> ZplTokenizer::TokenizeString(std::string_view input,
                                                                              std::size_t& position, char formatPrefix,
                                                                              char controlPrefix, char delimiter,
                                                                              bool flushAtEnd, Encoding encoding) {
    Syntax const syntax{static_cast<unsigned char>(formatPrefix), static_cast<unsigned char>(controlPrefix),
                        static_cast<unsigned char>(delimiter)};
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
        return {encoding, std::move(command)};
    }
    auto flushed = flushAtEnd ? machine_.Flush() : nullptr;
    if (flushed) {
        flushed->delimiter = delimiter;
        flushed = Deliver(std::move(flushed));
    }
    return {encoding, std::move(flushed)};
}

std::unique_ptr<ZplCommand> ZplTokenizer::Deliver(std::unique_ptr<ZplCommand> command) {
    if (!command) return nullptr;
    deliveredOffset_ = openOffset_;
    command->offset = openOffset_;
    command->length = end_ - openOffset_;
    return command;
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

std::unique_ptr<ZplCommand> ZplTokenizer::ConsumeByte(char byte, Syntax const& syntax, Encoding& encoding) {
    auto const result = utf_.Consume(byte, encoding, machine_.IsInBinaryMode());
    if (result.encoding != encoding) ReportMark(result.encoding, consumed_);
    encoding = result.encoding;
    if (!result.complete) return nullptr;
    return ConsumeCharacter(result.character, consumed_ + 1 - result.bytesBack, consumed_ + 1, syntax, encoding);
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
        auto const run = input.substr(position, machine_.ConsumePlainRun(input.substr(position), syntax.formatPrefix,
                                                                         syntax.controlPrefix, syntax.delimiter));
        if (auto const last = run.find_last_not_of(Blanks); last != run.npos)
            end_ = consumed_ + (position - start) + last + 1;
        position += run.size();
        if (position == input.size() || !IsAscii(input[position])) break;
        auto const offset = consumed_ + (position - start);
        command = ConsumeCharacter(static_cast<unsigned char>(input[position++]), offset, offset + 1, syntax, encoding);
    }
    utf_.SkipRun(input.substr(start, position - start), encoding);
    return command;
}

std::unique_ptr<ZplCommand> ZplTokenizer::ConsumeBinary(std::string_view input, std::size_t& position) {
    auto const run = input.substr(position, machine_.BinaryRemaining());
    position += run.size();
    utf_.SkipRun(run, Encoding::SingleByte);
    end_ = consumed_ + run.size();
    return Deliver(machine_.ConsumeBinaryRun(run));
}

std::unique_ptr<ZplCommand> ZplTokenizer::ConsumeCharacter(char32_t character, std::uint64_t begin, std::uint64_t end,
                                                           Syntax const& syntax, Encoding encoding) {
    // Asked before the machine moves: the prefix that opens a command completes the one before, which is delivered with
    // the place of its own prefix.
    bool const isBinary = machine_.IsInBinaryMode();
    bool const isLineEnd = character == U'\r' || character == U'\n';
    bool const opens =
        !isBinary && (character == syntax.formatPrefix || character == syntax.controlPrefix) && !isLineEnd;
    auto command = machine_.Consume(character, syntax.formatPrefix, syntax.controlPrefix, syntax.delimiter, encoding);
    // What ends with a character of its own ends behind it, whatever it is.
    bool const isBlank = isLineEnd || character == U' ' || character == U'\t';
    if (!opens && (isBinary || command || !isBlank)) end_ = end;
    command = Deliver(std::move(command));
    if (opens) {
        openOffset_ = begin;
        end_ = end;
    }
    return command;
}
