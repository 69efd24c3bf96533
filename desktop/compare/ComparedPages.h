#pragma once

#include <string>
#include <vector>

#include "desktop/CommandLine.h"
#include "desktop/compare/PackedPage.h"
#include "library/Desk.h"

/// A page to compare, kept as a file of its picture, which is small.
struct ComparedPage {
    std::string name;  ///< for people: the input, and which of its pages
    std::string file;

    /// Throws UsageError if the picture cannot be read.
    PackedPage Read() const;
};

/// The pages of an input: those that a stream prints, a picture, or the pictures of a folder in the order of their
/// names with numbers by value. What the stream would not print as it was sent is not told here. Throws UsageError.
std::vector<ComparedPage> ReadPages(RenderOptions const& options, Desk& desk, std::string const& input);
