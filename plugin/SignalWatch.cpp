#include "plugin/SignalWatch.h"

#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cstdint>

#include "propertybus/ThreadFactory.h"

namespace {

sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

}  // namespace

void SignalWatch::BlockSignals() {
    sigset_t const signals = EndingSignals();
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

SignalWatch::SignalWatch(ThreadFactory& threads, std::function<void()> onSignal)
    : threads_(threads), stop_(::eventfd(0, EFD_CLOEXEC)) {
    sigset_t const signals = EndingSignals();
    signals_ = ::signalfd(-1, &signals, SFD_CLOEXEC);
    thread_ = threads_.StartThread("signals", [this, onSignal = std::move(onSignal)] {
        for (;;) {
            pollfd descriptors[] = {{signals_, POLLIN, 0}, {stop_, POLLIN, 0}};
            if (::poll(descriptors, 2, -1) < 0) continue;
            if (descriptors[1].revents) return;
            signalfd_siginfo information;
            if (::read(signals_, &information, sizeof information) > 0) onSignal();
        }
    });
}

SignalWatch::~SignalWatch() {
    std::uint64_t const one = 1;
    [[maybe_unused]] auto const written = ::write(stop_, &one, sizeof one);
    threads_.Join(thread_);
    ::close(signals_);
    ::close(stop_);
}
