#pragma once

#include <string>
#include <vector>

/// One operation that the printer's tag encoder performs while a page passes it. Opaque to everything but the tag
/// handlers, which write it, and the print engine, which hands it to the encoder.
struct RfidOperation {
    /// Type of the operations that read a tag and so have to be waited for.
    static constexpr unsigned Read = 10;

    unsigned type = 0;
    /// Parameters of the operation in the encoder's own words, by name.
    std::vector<std::pair<std::string, std::string>> arguments;

    friend bool operator==(RfidOperation const&, RfidOperation const&) = default;
};

/// What the encoder read from a tag for one field number.
struct RfidReadResponse {
    unsigned fieldNumber = 0;
    std::string data;

    friend bool operator==(RfidReadResponse const&, RfidReadResponse const&) = default;
};

/// The tag operations of one label, with the pages (counted from 0 across the job, both included) that they apply to.
struct PageRangeRfidOperations {
    unsigned firstPage = 0;
    unsigned lastPage = 0;
    std::vector<RfidOperation> operations;

    friend bool operator==(PageRangeRfidOperations const&, PageRangeRfidOperations const&) = default;
};
