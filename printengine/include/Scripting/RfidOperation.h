#pragma once

#include <charconv>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// One operation that the printer's tag encoder performs while a page passes it. Opaque to everything but the tag
/// handlers, which write it, and the print engine, which hands it to the encoder.
struct RfidOperation {
    /// Type of the operations that read a tag and so have to be waited for.
    static constexpr unsigned Read = 10;
    static constexpr unsigned Write = 11;
    static constexpr unsigned Lock = 12;
    static constexpr unsigned SetPassword = 13;
    /// How the encoder is to work on the operations behind it.
    static constexpr unsigned SetUp = 14;

    unsigned type = 0;
    /// Parameters of the operation in the encoder's own words, by name.
    std::vector<std::pair<std::string, std::string>> arguments;

    /// The argument of that name; empty if there is none.
    std::string_view Argument(std::string_view name) const {
        for (auto const& [key, value] : arguments) {
            if (key == name) return value;
        }
        return {};
    }

    /// An argument that is a number; 0 if there is none.
    unsigned NumberOf(std::string_view name) const {
        std::string_view const text = Argument(name);
        unsigned number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    }

    friend bool operator==(RfidOperation const&, RfidOperation const&) = default;
};

/// What the encoder read from a tag for one read operation.
struct RfidReadResponse {
    /// The operation's argument "Sequence": the place of its command among those of the label.
    unsigned sequence = 0;
    std::string data;  ///< bytes in hexadecimal

    friend bool operator==(RfidReadResponse const&, RfidReadResponse const&) = default;
};

/// The tag operations of one label, with the pages (counted from 0 across the job, both included) that they apply to.
struct PageRangeRfidOperations {
    unsigned firstPage = 0;
    unsigned lastPage = 0;
    std::vector<RfidOperation> operations;

    friend bool operator==(PageRangeRfidOperations const&, PageRangeRfidOperations const&) = default;
};
