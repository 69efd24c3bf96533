#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fields/map/FieldPlaces.h"
#include "frontend/context/ZplCodePageConverter.h"
#include "frontend/stream/Encoding.h"
#include "library/forms/StreamEdit.h"

/// How the bytes of a command were read.
struct CommandSyntax {
    char formatPrefix = '^';
    char controlPrefix = '~';
    char delimiter = ',';
    Encoding encoding = Encoding::SingleByte;

    /// 7-bit text in the encoding of the command.
    std::string Encoded(std::string_view text) const;
};

/// In what a stream counts: a unit of `^MU`, D, I or M, and for dots how often they are enlarged.
struct CommandUnits {
    char unit = 'D';
    unsigned scale = 1;

    /// The number of a command that stands for so many dots.
    std::string NumberOf(int dots, unsigned designDpi) const;
};

/// A command with its places in the bytes that it was read from.
struct StreamCommand {
    std::string letters;  ///< upper case
    bool isControl = false;
    ZplCore::ByteRange place;       ///< from its prefix to its last character that is no blank
    ZplCore::ByteRange lastLetter;  ///< of the letters: with fonts, the font
    /// What stands behind the letters, with the blanks in front of the next prefix, which belong to data.
    ZplCore::ByteRange parameters;
    CommandSyntax syntax;
    CommandUnits units;
    std::shared_ptr<ZplCodePageConverter const> characters;  ///< the set in force behind it
};

/// A parameter of a command and where it stands, without blanks around it.
struct PlacedParameter {
    ZplCore::ByteRange place;
    std::string text;  ///< 7-bit; other characters as '?'
};

/// The commands of some bytes, in their order.
class StreamCommands {
public:
    /// Stored formats are always read with the characters that a printer starts with.
    enum class Source { Stream, StoredFormat };

    StreamCommands() = default;
    StreamCommands(std::string_view bytes, Source source);

    std::vector<StreamCommand> const& All() const { return commands_; }
    /// Those that begin in a run of the bytes.
    std::pair<std::size_t, std::size_t> In(ZplCore::ByteRange const& range) const;

private:
    std::vector<StreamCommand> commands_;
};

/// At least one. `bytes` are all that the command was read from.
std::vector<PlacedParameter> ParametersOf(StreamCommand const& command, std::string_view bytes);
/// The parameter of that index, or nothing.
std::string ParameterOf(StreamCommand const& command, std::string_view bytes, std::size_t index);
/// Sets parameters by their indices, which rise. 7-bit texts without delimiters.
void SetParameters(StreamEdit& edit, StreamCommand const& command, std::string_view bytes,
                   std::vector<std::pair<std::size_t, std::string>> const& values);
/// The characters of a run of a command's parameters as UTF-8 or bytes of its character set, without line ends.
std::string RawText(StreamCommand const& command, std::string_view bytes);
