#pragma once

#include <optional>
#include <string>

#include "Scripting/RfidOperation.h"
#include "frontend/context/ContextProcessor.h"

/// The tag operations of the label that is being replayed. They belong to its Label context, so that every copy records
/// its own.
namespace TagOperations {

/// What an operation of a type is called in reports: read, write, lock, password, setup.
std::string_view NameOf(unsigned type);

/// An operation of the command under way, with what identifies it and the password in force. It is recorded by Add,
/// often at the end of the command's field.
RfidOperation Make(ContextProcessor const& processor, unsigned type);

/// Puts an operation behind the others of the label; the first one brings the encoder's set-up with it. Past 1000 the
/// rest is left out, with a report.
void Add(ContextProcessor& processor, RfidOperation operation);

/// What the tag gave to the read operation of the command under way, in hexadecimal; nothing until it has been read.
std::optional<std::string> ReadData(ContextProcessor const& processor);

/// Changes an argument of the set-up that lasts from label to label.
void SetUp(ContextProcessor& processor, std::string const& name, std::string const& value);

/// The operations of a label with what was read, a line each: what, memory bank, first word, bytes in hexadecimal.
/// Empty for a label without any.
std::string Report(ContextProcessor const& label);

/// Lines for the host, between the control characters that begin and end all answers of the printer.
std::string Framed(std::string const& lines);

/// Lets the end of the page write the operations of the label into the printer's tag log, and tell them to the host if
/// that has asked for it.
void ReportAtEndOfPage(ContextProcessor& processor);

}  // namespace TagOperations
