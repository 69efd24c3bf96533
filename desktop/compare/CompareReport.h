#pragma once

#include <filesystem>
#include <optional>

#include "desktop/compare/PageDifference.h"
#include "foundation/Json.h"

/// A pair of pages that was compared.
struct ComparedPair {
    unsigned page;  ///< from 1
    PackedPage const& expected;
    PackedPage const& actual;
    PageDifference difference;
    bool isAlike;                                  ///< differs by no more than is tolerated
    std::optional<std::filesystem::path> picture;  ///< of the difference, if one was written
};

/// What is said about a comparison: a line for each page that is not the same dot for dot, or one JSON object.
class CompareReport {
public:
    explicit CompareReport(bool json);

    void Pair(ComparedPair const& pair);
    /// Ends the report; `isAlike` says whether all are. False if standard output cannot be written.
    bool Finish(std::size_t expectedPages, std::size_t actualPages, bool isAlike);

private:
    void Write(ComparedPair const& pair);

    bool json_;
    JsonWriter writer_;
};
