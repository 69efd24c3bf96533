#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// Makes the worker threads of the process, and joins them when it goes: whoever starts a thread sees to it that the
/// thread ends before that.
class ThreadFactory {
public:
    explicit ThreadFactory(unsigned mostThreads) : mostThreads_(mostThreads) {}
    ~ThreadFactory();
    ThreadFactory(ThreadFactory const&) = delete;
    ThreadFactory& operator=(ThreadFactory const&) = delete;

    /// Runs `work` on a thread of its own; an exception that leaves it is logged and ends the thread. The name has up
    /// to 15 letters. Throws std::runtime_error past the number of threads.
    std::thread::id StartThread(std::string const& name, std::function<void()> work);
    /// Waits for the end of one thread.
    void Join(std::thread::id id);

private:
    std::mutex mutex_;
    unsigned const mostThreads_;
    std::vector<std::thread> threads_;
};
