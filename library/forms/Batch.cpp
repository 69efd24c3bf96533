#include "library/forms/Batch.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "foundation/Quoted.h"
#include "frontend/stream/Ascii.h"

namespace {

bool IsSame(std::string_view a, std::string_view b) { return !a.empty() && ToAsciiUpper(a) == ToAsciiUpper(b); }

bool IsNameOf(TemplateField const& field, std::string_view column) {
    auto const number = std::to_string(field.number);
    return IsSame(column, field.name) || IsSame(column, field.prompt) || IsSame(column, number) ||
           IsSame(column, "FN" + number) || IsSame(column, "Field " + number);
}

bool IsQuantity(std::string_view column) {
    constexpr std::array Names{"quantity", "copies", "labels"};
    return std::any_of(Names.begin(), Names.end(), [&](auto const* name) { return IsSame(column, name); });
}

}  // namespace

BatchRows::BatchRows(std::filesystem::path const& list, std::vector<BatchTemplate> templates)
    : list_(list), templates_(std::move(templates)) {
    MatchColumns();
}

void BatchRows::MatchColumns() {
    auto const& names = list_.Columns();
    std::vector<bool> used(names.size());
    for (auto const& [format, bytes, fields] : templates_) {
        auto& columns = columns_.emplace_back();
        for (auto const& field : fields) {
            auto const found =
                std::find_if(names.begin(), names.end(), [&](auto const& name) { return IsNameOf(field, name); });
            bool const isThere = found != names.end();
            auto const column = static_cast<std::size_t>(found - names.begin());
            if (isThere) used[column] = true;
            columns.push_back(isThere ? std::optional(column) : std::nullopt);
        }
    }
    for (std::size_t column = 0; column < names.size() && !quantity_; ++column) {
        if (!used[column] && IsQuantity(names[column])) quantity_ = column;
    }
}

std::vector<std::string> BatchRows::Remarks() const {
    std::vector<std::string> remarks;
    std::vector<bool> used(list_.Columns().size());
    if (quantity_) used[*quantity_] = true;
    for (std::size_t i = 0; i < templates_.size(); ++i) {
        for (std::size_t j = 0; j < columns_[i].size(); ++j) {
            auto const& field = templates_[i].fields[j];
            if (columns_[i][j]) {
                used[*columns_[i][j]] = true;
                continue;
            }
            remarks.push_back("the list has no column for " + Quoted(field.name) + " of " + templates_[i].format.name +
                              (field.value.empty() ? ": it stays empty" : ": it is " + Quoted(field.value)));
        }
    }
    for (std::size_t column = 0; column < used.size(); ++column) {
        if (!used[column]) remarks.push_back("no field has the name of the column " + Quoted(list_.Columns()[column]));
    }
    return remarks;
}

std::string BatchRows::Fault() const {
    bool anyColumn = false;
    bool anyField = false;
    for (std::size_t i = 0; i < templates_.size(); ++i) {
        for (std::size_t j = 0; j < columns_[i].size(); ++j) {
            auto const& field = templates_[i].fields[j];
            anyField = true;
            anyColumn = anyColumn || columns_[i][j];
            if (columns_[i][j]) continue;
            if (auto const fault = FaultOf(field, field.value); !fault.empty())
                return "the list has no column for " + Quoted(field.name) + " of " + templates_[i].format.name;
        }
    }
    return anyField && !anyColumn ? "no column of the list has the name of a field" : "";
}

std::optional<BatchRows::Row> BatchRows::Next() {
    auto const row = list_.Next();
    if (!row) return std::nullopt;
    Row result{row->number, LabelsOf(*row), {}};
    for (std::size_t i = 0; i < templates_.size(); ++i) result.values.push_back(ValuesOf(i, *row));
    return result;
}

unsigned BatchRows::LabelsOf(ValueRow const& row) const {
    if (!quantity_) return 1;
    auto const& value = row.values[*quantity_];
    unsigned labels = 0;
    char const* const end = value.text.data() + value.text.size();
    auto const [stopped, error] = std::from_chars(value.text.data(), end, labels);
    if (error != std::errc() || stopped != end || labels == 0 || labels > MostLabels)
        throw ValueListError(value.line, value.column, Quoted(value.text) + " is no number of labels");
    return labels;
}

ValuesByNumber BatchRows::ValuesOf(std::size_t index, ValueRow const& row) const {
    ValuesByNumber values;
    auto const& fields = templates_[index].fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        auto const column = columns_[index][i];
        auto const& value = column ? row.values[*column] : row.values.front();
        auto const& text = column ? value.text : fields[i].value;
        if (auto const fault = FaultOf(fields[i], text); !fault.empty())
            throw ValueListError(value.line, value.column, fields[i].name + ": " + fault);
        values[fields[i].number] = text;
    }
    return values;
}

BatchCheck CheckBatch(std::filesystem::path const& list, std::vector<BatchTemplate> const& templates,
                      std::function<bool()> const& goesOn) {
    BatchCheck check;
    try {
        BatchRows rows(list, templates);
        check.remarks = rows.Remarks();
        check.refusal = rows.Fault();
        constexpr std::uint64_t Step = 256;
        for (bool isMore = check.refusal.empty(); isMore && (rows.RowsSoFar() % Step != 0 || goesOn());) {
            try {
                auto const row = rows.Next();
                isMore = row.has_value();
                if (row) check.labels += static_cast<std::uint64_t>(row->labels) * templates.size();
            } catch (ValueListError const& error) {
                ++check.faulty;
                if (check.faults.size() < BatchCheck::MostFaults) check.faults.emplace_back(error.what());
            }
        }
        check.rows = rows.RowsSoFar();
        if (check.refusal.empty() && check.rows == 0) check.refusal = "the list has no rows behind its first line";
    } catch (std::runtime_error const& error) {
        check.refusal = error.what();
    }
    return check;
}

Batch::Batch(std::filesystem::path const& list, std::vector<BatchTemplate> templates, LabelDots const& label,
             std::uint64_t behind)
    : rows_(list, std::move(templates)), label_(label) {
    while (rows_.RowsSoFar() < behind) {
        try {
            if (!rows_.Next()) return;
        } catch (ValueListError const&) {
            continue;  // told by the check, and left out
        }
    }
}

std::optional<Batch::Piece> Batch::Next() {
    constexpr std::uint64_t MostRows = 25;
    constexpr std::size_t MostBytes = 128UL * 1024;
    FilledStream stream(label_);
    Piece piece{{}, rows_.RowsSoFar() + 1, 0, 0};
    while (rows_.RowsSoFar() < piece.firstRow - 1 + MostRows && stream.Bytes().size() < MostBytes) {
        try {
            auto const row = rows_.Next();
            if (!row) break;
            auto const& templates = rows_.Templates();
            for (std::size_t i = 0; i < templates.size(); ++i)
                stream.Add(templates[i].format, templates[i].bytes, row->values[i], row->labels);
            piece.labels += static_cast<std::uint64_t>(row->labels) * templates.size();
        } catch (ValueListError const&) {
            continue;  // told by the check, and left out
        }
    }
    piece.lastRow = rows_.RowsSoFar();
    if (piece.lastRow < piece.firstRow) return std::nullopt;
    piece.stream = stream.Bytes();
    return piece;
}
