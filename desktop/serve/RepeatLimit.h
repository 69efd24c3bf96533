#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Keeps what is told to people readable: in a period the same is told some times, and the rest is counted. Sentences
/// that differ in numbers alone are the same.
class RepeatLimit {
public:
    static constexpr unsigned Most = 10;             ///< times that a sentence is told in a period
    static constexpr std::size_t MostKinds = 1'000;  ///< of sentences in a period; past them all others are one kind

    /// Whether the sentence may be told.
    bool Admits(std::string_view sentence);
    /// Begins the next period, and gives what is to be told of the last: how often what was left out. Nothing is
    /// counted before the next sentence.
    std::vector<std::string> EndPeriod();

private:
    struct Kind {
        std::string first;
        unsigned times = 0;
    };
    std::map<std::string, Kind, std::less<>> kinds_;  // by the sentence without numbers
};
