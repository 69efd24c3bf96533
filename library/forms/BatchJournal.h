#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "library/forms/StoredFormats.h"

/// How far a batch has come.
struct BatchRecord {
    std::string list;       ///< path of its file
    std::string listState;  ///< of the file when the batch began; see StateOf
    std::vector<StoredFormat> formats;
    std::uint64_t rows = 0;
    std::uint64_t labels = 0;
    std::uint64_t taken = 0;     ///< rows that the printer has taken over
    std::uint64_t underWay = 0;  ///< rows that it has been given, of which the last ones may not be taken

    /// Tells a file from what it becomes when somebody changes it.
    static std::string StateOf(std::filesystem::path const& list);
};

/// Keeps the record of a batch on the disk while it prints, so that after an end of the process or a loss of power it
/// goes on where it was.
class BatchJournal {
public:
    explicit BatchJournal(std::filesystem::path file) : file_(std::move(file)) {}

    /// Of a batch that has not come to its end.
    std::optional<BatchRecord> Read() const;
    /// Throws std::runtime_error with one sentence if it cannot be written.
    void Write(BatchRecord const& record) const;
    void Remove() const;

private:
    std::filesystem::path file_;
};
