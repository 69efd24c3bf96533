#include "desktop/web/WorkPool.h"

#include "foundation/DebugZones.h"

WorkPool::WorkPool(unsigned threads, std::size_t most) : most_(most) {
    for (unsigned i = 0; i < threads; ++i) threads_.emplace_back([this] { Run(); });
}

WorkPool::~WorkPool() {
    {
        std::lock_guard const lock(mutex_);
        isEnding_ = true;
    }
    wake_.notify_all();
    for (auto& thread : threads_) thread.join();
}

bool WorkPool::Add(std::function<void()> work) {
    {
        std::lock_guard const lock(mutex_);
        if (waiting_.size() + underWay_ >= most_) return false;
        waiting_.push_back(std::move(work));
    }
    wake_.notify_one();
    return true;
}

void WorkPool::Run() {
    std::unique_lock lock(mutex_);
    while (true) {
        wake_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (isEnding_) return;
        auto work = std::move(waiting_.front());
        waiting_.pop_front();
        ++underWay_;
        lock.unlock();
        try {
            work();
        } catch (std::exception const& error) {
            DebugLog(Error, error.what());
        }
        work = nullptr;
        lock.lock();
        --underWay_;
    }
}
