#pragma once

#include <functional>
#include <thread>

class ThreadFactory;

/// Waits for SIGTERM and SIGINT on a thread of its own, so that the process ends in order also while the main thread
/// waits for another component.
class SignalWatch {
public:
    /// To be called before any other thread is made.
    static void BlockSignals();

    SignalWatch(ThreadFactory& threads, std::function<void()> onSignal);
    ~SignalWatch();
    SignalWatch(SignalWatch const&) = delete;
    SignalWatch& operator=(SignalWatch const&) = delete;

private:
    ThreadFactory& threads_;
    int signals_;
    int stop_;
    std::thread::id thread_;
};
