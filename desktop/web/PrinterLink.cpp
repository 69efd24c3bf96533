#include "desktop/web/PrinterLink.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

PrinterLink::PrinterLink(int input, int output, std::function<void(std::string_view)> take, std::function<void()> end)
    : input_(input), output_(output), take_(std::move(take)), end_(std::move(end)) {
    if (::pipe2(stop_, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "no pipe");
    thread_ = std::thread([this] { Read(); });
}

PrinterLink::~PrinterLink() {
    ::close(stop_[1]);
    thread_.join();
    ::close(stop_[0]);
}

bool PrinterLink::Say(std::string const& word) const {
    std::string const line = word + '\n';
    return ::write(output_, line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

void PrinterLink::Read() {
    constexpr std::size_t LongestLine = 8 << 20;
    std::string text;
    char buffer[65536];
    while (true) {
        pollfd waits[] = {{input_, POLLIN, 0}, {stop_[0], POLLIN, 0}};
        if (::poll(waits, 2, -1) < 0 && errno != EINTR) return end_();
        if (waits[1].revents != 0) return;
        if (waits[0].revents == 0) continue;
        ssize_t const count = ::read(input_, buffer, sizeof buffer);
        if (count <= 0) return end_();
        text.append(buffer, static_cast<std::size_t>(count));
        std::size_t taken = 0;
        for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', taken)) {
            take_(std::string_view(text).substr(taken, end - taken));
            taken = end + 1;
        }
        text.erase(0, taken);
        if (text.size() > LongestLine) text.clear();
    }
}
