#include "jobhost/model/LineIndex.h"

#include <algorithm>

void LineIndex::Append(std::string_view bytes) {
    for (auto end = bytes.find('\n'); end != bytes.npos; end = bytes.find('\n', end + 1)) {
        starts_.push_back(size_ + end + 1);
        if (starts_.size() <= mostLines_) continue;
        starts_.pop_front();
        ++first_;
    }
    size_ += bytes.size();
}

std::pair<std::size_t, std::size_t> LineIndex::PlaceOf(std::uint64_t offset) const {
    offset = std::min(offset, size_);
    auto const behind = std::upper_bound(starts_.begin(), starts_.end(), offset);
    if (behind == starts_.begin()) return {0, 0};
    auto const line = first_ + static_cast<std::size_t>(behind - starts_.begin()) - 1;
    return {line, static_cast<std::size_t>(offset - *std::prev(behind)) + 1};
}

void LineIndex::Forget(std::uint64_t offset) {
    while (starts_.size() > 1 && starts_[1] <= offset) {
        starts_.pop_front();
        ++first_;
    }
}
