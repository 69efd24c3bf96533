#pragma once

#include <cstdint>

/// The fonts of the machine as fontconfig knows them, in the form of ZplScriptsModule.
std::uint32_t FindSystemFace(char32_t const* characters, std::uint32_t count, int isBold, char* path,
                             std::uint32_t capacity);
std::uint32_t FindSystemFile(char const* name, char* path, std::uint32_t capacity);
int HoldsSystemFonts(char const* folder);
