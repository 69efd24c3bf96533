#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <thread>

/// The other end of what `zpl serve` and this program say to each other over a pair of pipes: lines about the printer
/// come in, typed words go out.
class PrinterLink {
public:
    /// `take` is called with each line, `end` when there will be no more of them; both on a thread of its own.
    PrinterLink(int input, int output, std::function<void(std::string_view)> take, std::function<void()> end);
    ~PrinterLink();
    PrinterLink(PrinterLink const&) = delete;
    PrinterLink& operator=(PrinterLink const&) = delete;

    /// Sends a line. False if nobody takes it.
    bool Say(std::string const& word) const;

private:
    void Read();

    int const input_;
    int const output_;
    int stop_[2];
    std::function<void(std::string_view)> take_;
    std::function<void()> end_;
    std::thread thread_;
};
