#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What a printer can tell of itself without looking at a stream.
struct PrinterFacts {
    std::string name = "ZPLHOST";
    std::string version;
    std::string serialNumber;
    std::string address;  ///< at which it is reached
    unsigned dpi = 203;
    unsigned widthDots = 0;
    unsigned lengthDots = 0;
    double inchesPerSecond = 0;
    bool paused = false;
    unsigned waitingJobs = 0;
    double printedInches = 0;
    std::uint64_t totalMemory = 0;  ///< for stored objects, in bytes
    std::uint64_t freeMemory = 0;
    char formatPrefix = '^';
    char controlPrefix = '~';
    char delimiter = ',';
};

/// A question that senders wait for an answer to. It has no parameters but the letters that belong to its name.
struct HostQuestion {
    std::string_view letters;
    bool isControl;
    std::size_t parameterLetters;
    /// By the letters of the parameter, in either case; empty where there is no answer. Null: the interpreter answers.
    std::string (*answer)(PrinterFacts const& printer, std::string_view parameter);
};

/// The row of these letters (upper case) and this prefix, or null.
HostQuestion const* FindHostQuestion(std::string_view letters, bool isControl);

/// The three lines that answer `~HS`, of a printer at which no stream is open.
std::string HostStatusLines(PrinterFacts const& printer);
