#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// The bytes of a regular file; empty if there is none of that path or it cannot be read.
std::string ReadRegularFile(std::filesystem::path const& path);

/// Reads a whole file of any kind (also a pipe) into `content`; the error if that fails.
std::error_code ReadFile(std::filesystem::path const& path, std::string& content);

/// Reads standard input to its end into `content`; the error if that fails.
std::error_code ReadStandardInput(std::string& content);

/// Against what a file is whole, old or new: an end of the process alone, or a loss of power too. The second waits for
/// the disk.
enum class WholeAfter { ProcessEnd, PowerLoss };

/// Writes a file under a temporary name in the same folder and renames it, so that a reader sees all of it or nothing.
/// On an error the temporary file is gone and an earlier file of that name stands.
std::error_code WriteFileAtomically(std::filesystem::path const& path, std::string_view content,
                                    WholeAfter wholeAfter = WholeAfter::ProcessEnd);
