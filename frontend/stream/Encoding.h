#pragma once

/// How the bytes of a stream form characters.
enum class Encoding {
    SingleByte = 0,  ///< one byte is one character
    Utf8 = 1,
    Utf16Le = 2,
    Utf16Be = 3,
};
