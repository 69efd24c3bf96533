#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Scripting/RfidOperation.h"
#include "frontend/context/ContextProcessor.h"

/// The tag operations of the label that is being replayed. They belong to its Label context, so that every copy records
/// its own. docs/property-bus.md lists the types with their arguments.
namespace TagOperations {

/// Memory of a tag as the arguments name it.
namespace Banks {
inline constexpr std::string_view Reserved = "0";
inline constexpr std::string_view Tid = "2";
inline constexpr std::string_view User = "3";
inline constexpr std::string_view Epc = "E";
inline constexpr std::string_view ApplicationFamily = "AFI";
inline constexpr std::string_view KillPassword = "Kill";
inline constexpr std::string_view AccessPassword = "Access";
}  // namespace Banks

/// What an operation of a type is called in reports: read, write, lock, password, setup.
std::string_view NameOf(unsigned type);

/// An operation of the command under way, with what identifies it, the password in force, and where it works. It is
/// recorded by Add, often at the end of the command's field.
RfidOperation Make(ContextProcessor const& processor, unsigned type, std::string_view bank, unsigned firstWord = 0);

/// Puts an operation behind the others of the label; the first one brings the encoder's set-up with it. Past 200, or
/// 64 KiB of arguments, the rest is left out with a report.
void Add(ContextProcessor& processor, RfidOperation operation);

/// What the tag gave to the read operation of the command under way, in hexadecimal; nothing until it has been read.
std::optional<std::string> ReadData(ContextProcessor const& processor);

/// Changes an argument of the set-up that lasts from label to label.
void SetUp(ContextProcessor& processor, std::string const& name, std::string const& value);

/// Operations with what was read, a line each: what, memory bank, first word, bytes in hexadecimal. Passwords are not
/// told.
std::string Report(std::vector<RfidOperation> const& operations, std::vector<RfidReadResponse> const& responses);

/// Lines for the host, between the control characters that begin and end all answers of the printer.
std::string Framed(std::string const& lines);

}  // namespace TagOperations
