#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "library/forms/DrawnFormat.h"
#include "library/forms/LabelDots.h"
#include "library/forms/StoredFormats.h"

/// What the value of a field must be like. Lengths are in characters.
struct ValueChecks {
    bool isRequired = false;
    bool digitsOnly = false;
    std::size_t least = 0;
    std::size_t most = 0;  ///< 0: as many as there may be

    friend bool operator==(ValueChecks const&, ValueChecks const&) = default;
};

/// A field of a stored format that each label fills anew: a number of `^FN`, wherever it stands in the format.
struct TemplateField {
    unsigned number = 0;
    std::string prompt;  ///< as the format has it; may be empty
    std::string name;    ///< what people call it
    std::string value;   ///< it begins with
    ValueChecks checks;

    friend bool operator==(TemplateField const&, TemplateField const&) = default;
};

/// What fills fields, each by its number; UTF-8.
using ValuesByNumber = std::map<unsigned, std::string>;

/// Bytes of a value; no symbology holds so many.
inline constexpr std::size_t LongestValue = 8192;
/// Labels that one order may ask for.
inline constexpr unsigned MostLabels = 99'999'999;

/// The fields that wait for data, in the order of the format. Their names are their prompts, and what they are checked
/// for is what their barcodes ask for.
std::vector<TemplateField> VariableFields(DrawnFormat const& drawn);

/// What is wrong with a value, in a sentence without the field's name; empty if nothing is.
std::string FaultOf(TemplateField const& field, std::string_view value);

/// What it begins with, or something that shows where it stands.
std::string SampleOf(TemplateField const& field);

/// A stream that recalls stored formats and fills their fields. Any text is safe in it, whatever character set earlier
/// streams have chosen, and later ones find no other than that of the formats.
class FilledStream {
public:
    explicit FilledStream(LabelDots const& label) : setUp_(label.Commands()) {}

    /// `bytes`: of the format, as they are stored. Fields without text draw nothing.
    void Add(StoredFormat const& format, std::string_view bytes, ValuesByNumber const& values, unsigned labels);
    bool IsEmpty() const { return stream_.empty(); }
    std::string const& Bytes() const { return stream_; }

private:
    std::string setUp_;  ///< in front of each format
    std::string stream_;
    std::string characterSet_;  ///< that the formats so far leave behind; empty: none
};
