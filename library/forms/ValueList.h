#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// What is wrong in a list of values; the text says where, in a sentence.
class ValueListError : public std::runtime_error {
public:
    /// `column`: in bytes, from 1.
    ValueListError(std::size_t line, std::size_t column, std::string const& text);

    std::size_t Line() const { return line_; }
    std::size_t Column() const { return column_; }

private:
    std::size_t line_;
    std::size_t column_;
};

/// A value, and where it stands in its file.
struct ListValue {
    std::string text;
    std::size_t line = 1;
    std::size_t column = 1;  ///< in bytes
};

/// A row of a list.
struct ValueRow {
    std::uint64_t number = 0;  ///< from 1; the names of the columns do not count
    std::vector<ListValue> values;
};

/// A list of values in a file of RFC 4180: a row a line, the first one with the names of the columns, in UTF-8. Commas,
/// semicolons or tabs part the values, which the first line tells. It is read row by row, so that its length does not
/// matter.
class ValueList {
public:
    static constexpr std::size_t LongestRow = 1024UL * 1024;  ///< in bytes
    static constexpr std::size_t MostColumns = 1000;

    /// Reads the names. Throws ValueListError, and std::runtime_error if the file cannot be read.
    explicit ValueList(std::filesystem::path const& file);

    std::vector<std::string> const& Columns() const { return columns_; }
    char Separator() const { return separator_; }
    /// The next row; nothing behind the last one. Throws ValueListError for one with a fault; the next call goes on
    /// behind it.
    std::optional<ValueRow> Next();
    /// Rows so far, with those that have a fault.
    std::uint64_t Rows() const { return rows_; }

private:
    void ReadColumns();
    char FindSeparator();
    std::optional<std::vector<ListValue>> ReadRow();
    /// Adds the value that begins at the next byte; false if its row ends behind it.
    bool ReadValue(std::vector<ListValue>& row, std::size_t& bytes);
    void ReadQuoted(ListValue& value, std::size_t& bytes);
    bool EndsValue(int byte) const;
    int Take();
    int Peek() { return file_.peek(); }
    /// Throws when the row is over, so that the next one is read whole.
    void Fail(ListValue const& value, std::string const& text);

    std::ifstream file_;
    std::vector<std::string> columns_;
    char separator_ = ',';
    std::uint64_t rows_ = 0;
    std::size_t line_ = 1;    ///< of the next byte
    std::size_t column_ = 1;  ///< of the next byte
    std::optional<ValueListError> fault_;
};
