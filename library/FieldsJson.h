#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "fields/map/FieldMap.h"
#include "foundation/Json.h"
#include "jobhost/model/LineIndex.h"

/// What is noted of the fields of one page, and what it takes to read it.
struct PageFields {
    double pixelsPerDot = 1;  ///< of the finished page for a dot of the stream
    bool turned = false;      ///< by 180 degrees
    bool mirrored = false;
    std::string list;  ///< a JSON array

    /// As members of the object under way.
    void WriteMembers(JsonWriter& writer) const;
};

/// Writes what is noted of the fields of a page for programs; docs/field-map.md says what the members mean. It may be
/// used by several threads, each with maps of its own.
class FieldsJson {
public:
    explicit FieldsJson(std::string_view stream) { lines_.Append(stream); }
    /// The stream goes by; see Append.
    explicit FieldsJson(LineIndex lines) : lines_(std::move(lines)) {}

    /// Bytes that follow in the stream.
    void Append(std::string_view bytes) { lines_.Append(bytes); }
    LineIndex const& Lines() const { return lines_; }
    /// Of the page that was noted last.
    PageFields Of(ZplCore::FieldMap const& map) const;

private:
    LineIndex lines_;
};
