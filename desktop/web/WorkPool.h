#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Threads for what takes longer than the server's thread may wait.
class WorkPool {
public:
    /// `most` works may wait and be under way at once.
    WorkPool(unsigned threads, std::size_t most);
    /// Waits for those under way; those that wait are dropped.
    ~WorkPool();
    WorkPool(WorkPool const&) = delete;
    WorkPool& operator=(WorkPool const&) = delete;

    /// False if there are as many as there may be. A work that throws is over.
    bool Add(std::function<void()> work);

private:
    void Run();

    std::size_t const most_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> waiting_;
    std::size_t underWay_ = 0;
    bool isEnding_ = false;
    std::vector<std::thread> threads_;
};
