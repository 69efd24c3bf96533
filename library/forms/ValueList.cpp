#include "library/forms/ValueList.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "foundation/Quoted.h"

namespace {

constexpr int End = std::ifstream::traits_type::eof();

std::string Trimmed(std::string const& text) {
    auto const first = text.find_first_not_of(' ');
    return first == text.npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Count(std::size_t count, char const* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

}  // namespace

ValueListError::ValueListError(std::size_t line, std::size_t column, std::string const& text)
    : std::runtime_error("line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + text),
      line_(line),
      column_(column) {}

ValueList::ValueList(std::filesystem::path const& file) {
    std::error_code error;
    if (std::filesystem::is_regular_file(file, error)) {
        errno = 0;
        file_.open(file, std::ios::binary);
    }
    if (!file_.is_open()) {
        std::string const reason = error ? error.message() : std::generic_category().message(errno ? errno : ENOENT);
        throw std::runtime_error("the list " + Quoted(file.filename().string()) + " cannot be read: " + reason);
    }
    ReadColumns();
}

void ValueList::ReadColumns() {
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    std::array<char, Mark.size()> begin{};
    file_.read(begin.data(), begin.size());
    std::string_view const read(begin.data(), static_cast<std::size_t>(file_.gcount()));
    if (read.starts_with("\xFF\xFE") || read.starts_with("\xFE\xFF"))
        throw ValueListError(1, 1, "the list is UTF-16: save it as CSV in UTF-8");
    file_.clear();
    auto const start = read == Mark ? static_cast<std::streamoff>(Mark.size()) : 0;
    file_.seekg(start);
    separator_ = FindSeparator();
    file_.clear();
    file_.seekg(start);
    auto const names = ReadRow();
    if (!names) throw ValueListError(1, 1, "the list is empty: its first line holds the names of the columns");
    for (auto const& name : *names) {
        auto column = Trimmed(name.text);
        if (!column.empty() && std::find(columns_.begin(), columns_.end(), column) != columns_.end())
            throw ValueListError(name.line, name.column, "there is another column " + Quoted(column));
        columns_.push_back(std::move(column));
    }
}

/// The one that the first line holds most of, outside of quotation marks.
char ValueList::FindSeparator() {
    constexpr std::string_view Separators = ",;\t";
    std::array<std::size_t, Separators.size()> counts{};
    bool isQuoted = false;
    std::size_t bytes = 0;
    for (int byte = file_.get(); byte != End && bytes < LongestRow; byte = file_.get(), ++bytes) {
        if (byte == '"') isQuoted = !isQuoted;
        if (!isQuoted && (byte == '\n' || byte == '\r')) break;
        auto const place = Separators.find(static_cast<char>(byte));
        if (!isQuoted && place != Separators.npos) ++counts[place];
    }
    return Separators[static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

std::optional<ValueRow> ValueList::Next() {
    auto row = ReadRow();
    if (!row) return std::nullopt;
    if (row->size() != columns_.size()) {
        auto const& at = row->size() > columns_.size() ? (*row)[columns_.size()] : row->back();
        throw ValueListError(
            at.line, at.column,
            "the row has " + Count(row->size(), "value") + ", and the list " + Count(columns_.size(), "column"));
    }
    return ValueRow{rows_, *std::move(row)};
}

std::optional<std::vector<ListValue>> ValueList::ReadRow() {
    while (Peek() == '\n' || Peek() == '\r') Take();
    if (Peek() == End) return std::nullopt;
    if (!columns_.empty()) ++rows_;
    std::vector<ListValue> row;
    std::size_t bytes = 0;
    while (ReadValue(row, bytes)) continue;
    if (file_.bad()) throw std::runtime_error("the list cannot be read any further");
    if (auto const fault = std::exchange(fault_, {})) throw ValueListError(*fault);
    return row;
}

bool ValueList::ReadValue(std::vector<ListValue>& row, std::size_t& bytes) {
    ListValue value{{}, line_, column_};
    if (Peek() == '"') {
        ReadQuoted(value, bytes);
        if (!EndsValue(Peek())) Fail(value, "text stands behind the closing quotation mark of a value");
    }
    for (; !EndsValue(Peek()); ++bytes) {
        char const byte = static_cast<char>(Take());
        if (bytes < LongestRow) value.text += byte;
    }
    auto const wrong = std::find_if(value.text.begin(), value.text.end(), [](char c) { return c == '\0'; });
    if (auto const invalid = utf8::find_invalid(value.text.begin(), value.text.end()); invalid != value.text.end())
        Fail(value, "the value is not UTF-8: save the list as CSV in UTF-8");
    if (wrong != value.text.end()) Fail(value, "the value holds a byte of zero: save the list as CSV in UTF-8");
    if (bytes >= LongestRow) Fail(value, "the row is longer than " + std::to_string(LongestRow) + " bytes");
    if (row.size() == MostColumns) Fail(value, "there are more than " + Count(MostColumns, "column"));
    if (row.size() <= MostColumns) row.push_back(std::move(value));
    int const end = Take();
    if (end == '\r' && Peek() == '\n') Take();
    return end == separator_;
}

/// From its opening quotation mark to the closing one. Two of them stand for one.
void ValueList::ReadQuoted(ListValue& value, std::size_t& bytes) {
    Take();
    for (;; ++bytes) {
        int const byte = Take();
        if (byte == End) return Fail(value, "the quotation mark that opens this value is never closed");
        if (byte == '"' && Peek() != '"') return;
        if (byte == '"') Take();
        if (bytes < LongestRow) value.text += static_cast<char>(byte);
    }
}

bool ValueList::EndsValue(int byte) const { return byte == End || byte == separator_ || byte == '\n' || byte == '\r'; }

int ValueList::Take() {
    int const byte = file_.get();
    bool const endsLine = byte == '\n' || (byte == '\r' && Peek() != '\n');
    line_ += endsLine ? 1 : 0;
    column_ = endsLine ? 1 : column_ + 1;
    return byte;
}

void ValueList::Fail(ListValue const& value, std::string const& text) {
    if (!fault_) fault_.emplace(value.line, value.column, text);
}
