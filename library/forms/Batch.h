#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "library/forms/Template.h"
#include "library/forms/ValueList.h"

/// A stored format of which a batch prints a label for each row.
struct BatchTemplate {
    StoredFormat format;
    std::string bytes;  ///< of the format
    std::vector<TemplateField> fields;
};

/// The rows of a list as values of templates. A column fills the fields of its name, prompt or number, whatever the
/// case of letters; one called "quantity", "copies" or "labels" says how often a row prints. A field without a column
/// has the value that it begins with.
class BatchRows {
public:
    /// Throws what ValueList throws.
    BatchRows(std::filesystem::path const& list, std::vector<BatchTemplate> templates);

    struct Row {
        std::uint64_t number = 0;            ///< from 1
        unsigned labels = 1;                 ///< of each template
        std::vector<ValuesByNumber> values;  ///< of each template
    };

    /// The next row; nothing behind the last one. Throws ValueListError for one that cannot print; the next call goes
    /// on behind it.
    std::optional<Row> Next();
    std::uint64_t RowsSoFar() const { return list_.Rows(); }
    std::vector<BatchTemplate> const& Templates() const { return templates_; }

    /// Sentences about fields that no column fills, and columns that fill no field.
    std::vector<std::string> Remarks() const;
    /// What makes that no row can print; empty if nothing does.
    std::string Fault() const;

private:
    void MatchColumns();
    unsigned LabelsOf(ValueRow const& row) const;
    ValuesByNumber ValuesOf(std::size_t index, ValueRow const& row) const;

    ValueList list_;
    std::vector<BatchTemplate> templates_;
    std::vector<std::vector<std::optional<std::size_t>>> columns_;  ///< of each field of each template
    std::optional<std::size_t> quantity_;                           ///< column
};

/// What a look through all rows has found, before anything prints.
struct BatchCheck {
    static constexpr std::size_t MostFaults = 50;  // are told; the rest is counted

    std::uint64_t rows = 0;    ///< with those at fault
    std::uint64_t faulty = 0;  ///< rows that cannot print
    std::uint64_t labels = 0;  ///< of all others
    std::vector<std::string> faults;
    std::vector<std::string> remarks;
    std::string refusal;  ///< why nothing can print at all; empty if something can
};

/// Looks through a list. `goesOn` is asked now and then, and false ends it.
BatchCheck CheckBatch(std::filesystem::path const& list, std::vector<BatchTemplate> const& templates,
                      std::function<bool()> const& goesOn);

/// A list on its way to the printer, in streams of some rows each. Rows that cannot print are left out.
class Batch {
public:
    /// `label`: in the printer. `behind`: rows that are done already. Throws what ValueList throws.
    Batch(std::filesystem::path const& list, std::vector<BatchTemplate> templates, LabelDots const& label,
          std::uint64_t behind = 0);

    struct Piece {
        std::string stream;
        std::uint64_t firstRow = 0;
        std::uint64_t lastRow = 0;
        std::uint64_t labels = 0;
    };

    std::optional<Piece> Next();

private:
    BatchRows rows_;
    LabelDots label_;
};
