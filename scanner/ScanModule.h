#pragma once

#include <stdint.h>

/// What the module that reads symbols exports. It is loaded when a run asks for it, perhaps into a program with a C++
/// library of its own: only plain data pass, and no exceptions. The number in a name changes with what it does.
#ifdef __cplusplus
extern "C" {
#endif

/// Looks for one symbol of the kind `format`, as "Code128", in a picture of one byte a pixel, from 0 for black to 255,
/// and writes what it says into `text`, with FNC1 as 0x1D: at most `capacity` bytes. Gives their number, or -1 if it
/// reads none. Threads may call it at once.
int zpl_scan_read_1(uint8_t const* pixels, int width, int height, char const* format, uint8_t* text, int capacity);

#ifdef __cplusplus
}
#endif
