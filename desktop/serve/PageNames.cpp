#include "desktop/serve/PageNames.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

namespace {

constexpr unsigned LargestJob = 999'999'999;  // a file of more is not one of a printer

/// Letters and digits, and between them '_' and '-': a name that no program takes for an option.
std::string FileName(std::string_view name) {
    constexpr std::size_t Longest = 64;
    std::string result(name.substr(0, Longest));
    for (char& c : result) {
        bool const harmless = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
        if (!harmless) c = '_';
    }
    if (result.starts_with('-')) result.front() = '_';
    return result.empty() ? "job" : result;
}

/// Takes "-N" from the end of the text.
std::optional<unsigned> TakeNumber(std::string_view& text) {
    auto const dash = text.rfind('-');
    if (dash == text.npos) return std::nullopt;
    unsigned number = 0;
    auto const [end, error] = std::from_chars(text.data() + dash + 1, text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    text.remove_suffix(text.size() - dash);
    return number;
}

}  // namespace

PageNames::PageNames(std::filesystem::path folder) : folder_(std::move(folder)) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        std::string const file = entry->path().stem().string();
        std::string_view name = file;
        if (!TakeNumber(name)) continue;
        if (auto const job = TakeNumber(name)) {
            unsigned& last = jobs_[std::string(name)];
            if (*job <= LargestJob) last = std::max(last, *job);
        }
    }
}

void PageNames::StartJob(std::string_view name, unsigned first) {
    std::string const stem = FileName(name);
    std::error_code error;
    do {
        job_ = stem + '-' + std::to_string(++jobs_[stem]);
    } while (std::filesystem::exists(Of(first), error));
}

std::filesystem::path PageNames::Of(unsigned page) const {
    return folder_ / (job_ + '-' + std::to_string(page + 1) + ".png");
}
