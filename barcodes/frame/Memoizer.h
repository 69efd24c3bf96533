#pragma once

#include <array>
#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>

namespace ZplCore {

/// Keeps the last N results of a costly function by its arguments. The oldest result goes first, used or not. A
/// reference stays valid until N further misses. Not locked: each thread that renders keeps its own.
template <std::size_t N, typename Function, typename... Args>
class Memoizer {
public:
    using Result = std::invoke_result_t<Function, Args const&...>;

    explicit Memoizer(Function function) : function_(std::move(function)) {}

    Result const& operator()(Args const&... args) {
        for (auto const& item : items_) {
            if (item && item->first == std::tie(args...)) return item->second;
        }
        Result result = function_(args...);
        newest_ = (newest_ + 1) % N;
        items_[newest_].emplace(std::tuple<Args...>(args...), std::move(result));
        return items_[newest_]->second;
    }

private:
    Function function_;
    std::array<std::optional<std::pair<std::tuple<Args...>, Result>>, N> items_;
    std::size_t newest_ = N - 1;
};

}  // namespace ZplCore
