#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frontend/stream/ZplTokenizer.h"

/// Follows the bytes of a print stream to know where it may be cut: never inside a format, nor inside a command.
class StreamWatch {
public:
    StreamWatch(char formatPrefix, char controlPrefix, char delimiter)
        : formatPrefix_(formatPrefix), controlPrefix_(controlPrefix), delimiter_(delimiter) {}

    void Append(std::string_view bytes);
    bool InFormat() const { return inFormat_; }
    /// Whether the stream breaks off in the letters of a command.
    bool InLetters() const;
    /// Whether the stream breaks off in a command that brings data along, which may take its time.
    bool InDownload() const;
    /// Whether bytes have come since ForgetBytes that are no blanks, but among them neither prefix.
    bool IsNoise() const { return hasText_ && !hasPrefix_; }
    void ForgetBytes() { hasText_ = hasPrefix_ = false; }
    /// Bytes up to the end of the last format; 0 if none has ended.
    std::uint64_t LastFormatEnd() const { return lastFormatEnd_; }

private:
    void Note(ZplCommand const& command);

    char formatPrefix_;
    char controlPrefix_;
    char delimiter_;
    ZplTokenizer tokenizer_;
    Encoding encoding_ = Encoding::SingleByte;
    bool inFormat_ = false;
    bool hasText_ = false;
    bool hasPrefix_ = false;
    std::uint64_t lastFormatEnd_ = 0;
    std::string tail_;  // what stands behind the last prefix, the prefix included, as far as it matters
};
