#pragma once

#include <optional>
#include <vector>

#include "Scripting/RfidOperation.h"
#include "foundation/Json.h"
#include "library/FieldsJson.h"

/// What programs are told of a drawn page.
struct PageReport {
    unsigned width;   ///< dots of the printer
    unsigned height;  ///< dots of the printer
    unsigned label;   ///< from 1
    unsigned copy;    ///< from 1
    unsigned copies;
    std::vector<RfidOperation> tagOperations = {};
    std::optional<PageFields> fields = {};

    /// As members of the JSON object under way.
    void WriteMembers(JsonWriter& writer) const;
};
