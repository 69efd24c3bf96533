#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "library/forms/StreamCommands.h"

/// A change that cannot be made; the text says why, in a sentence for people.
class EditRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// How the data of a field are written.
struct DataNotation {
    char hexIndicator = 0;     ///< announces two hexadecimal digits; 0 if nothing does
    bool isBlock = false;      ///< \& stands for the end of a line
    bool endsAtComma = false;  ///< it is one parameter of several
};

/// Data of a command, as they are written, as text: UTF-8, with line ends of blocks and with hexadecimal digits read.
/// Clock codes, control codes of symbologies and the like stay as they are.
std::string TextOfData(std::string_view raw, StreamCommand const& command, DataNotation const& notation);

/// That text as the command writes it, in its encoding. Throws EditRefusal if the label's character set lacks a
/// character. `needsHex` is set if it can only be written with hexadecimal digits behind an indicator, which it takes
/// to be '_' where the field has none.
std::string DataOfText(std::string_view text, StreamCommand const& command, DataNotation notation, bool& needsHex);
