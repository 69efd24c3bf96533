#pragma once

#include <filesystem>
#include <string_view>

#include "desktop/compare/PackedPage.h"

/// Pictures that pages are compared with, whoever made them.
namespace PictureFile {

/// Whether a file begins as one that Read reads.
bool IsPicture(std::string_view bytes);

/// A PNG of any kind (ISO/IEC 15948), or a portable bitmap, plain or raw. What is darker than half grey is black, and
/// what is transparent lies on white. Throws std::runtime_error with the reason if the file is damaged or larger than a
/// page may be.
PackedPage Read(std::string_view bytes);

/// Writes how two pages differ as a PNG: grey where both are black, red what only the expected page has, blue what only
/// the actual one has. Throws OutputError.
void WriteDifference(std::filesystem::path const& path, PackedPage const& expected, PackedPage const& actual);

}  // namespace PictureFile
