#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

/// The parameters of a command, in the order of the stream. They lie in one text, so that each costs its bytes and the
/// place of its first: a command may consist of millions of delimiters. At most 4 GiB.
class ZplParameters {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::string_view;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = std::string_view;

        Iterator() = default;
        Iterator(ZplParameters const* of, std::size_t index) : of_(of), index_(index) {}
        std::string_view operator*() const { return (*of_)[index_]; }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        Iterator operator++(int) { return {of_, index_++}; }
        friend bool operator==(Iterator const&, Iterator const&) = default;

    private:
        ZplParameters const* of_ = nullptr;
        std::size_t index_ = 0;
    };

    ZplParameters() = default;
    ZplParameters(std::initializer_list<std::string_view> texts) {
        for (auto const text : texts) push_back(text);
    }

    std::size_t size() const { return begins_.size(); }
    bool empty() const { return begins_.empty(); }
    /// Holds until the parameters change.
    std::string_view operator[](std::size_t index) const {
        std::size_t const end = index + 1 < begins_.size() ? begins_[index + 1] : text_.size();
        return std::string_view(text_).substr(begins_[index], end - begins_[index]);
    }
    Iterator begin() const { return {this, 0}; }
    Iterator end() const { return {this, size()}; }

    /// All of them, one right behind the other.
    std::string_view Text() const { return text_; }
    /// What they take, in bytes.
    std::size_t Bytes() const { return text_.size() + begins_.size() * sizeof(begins_[0]); }

    void push_back(std::string_view text) {
        AddBegin(static_cast<std::uint32_t>(text_.size()));
        text_ += text;
    }
    /// Lengthens the last one, of which there must be one.
    void AppendToLast(std::string_view text) { text_ += text; }
    /// Adds one that begins there in the text, which is appended when all have been added: by AppendToLast.
    void AddBegin(std::uint32_t begin) {
        // A host usually sends no more than these; one allocation holds them.
        constexpr std::size_t Usual = 6;
        if (begins_.capacity() == 0) begins_.reserve(Usual);
        begins_.push_back(begin);
    }
    void clear() {
        text_.clear();
        begins_.clear();
    }

    /// All from `first` on as one text, with `between` between them.
    std::string Joined(std::size_t first, char between) const {
        std::string text;
        if (first >= size()) return text;
        text.reserve(text_.size() - begins_[first] + size() - first);
        for (std::size_t i = first; i < size(); ++i) {
            if (i != first) text += between;
            text += (*this)[i];
        }
        return text;
    }

    friend bool operator==(ZplParameters const&, ZplParameters const&) = default;

private:
    std::string text_;
    std::vector<std::uint32_t> begins_;
};
