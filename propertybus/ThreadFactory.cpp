#include "propertybus/ThreadFactory.h"

#include <pthread.h>

#include <algorithm>
#include <stdexcept>

#include "foundation/DebugZones.h"

ThreadFactory::~ThreadFactory() {
    for (auto& thread : threads_) thread.join();
}

std::thread::id ThreadFactory::StartThread(std::string const& name, std::function<void()> work) {
    std::lock_guard const lock(mutex_);
    if (threads_.size() >= mostThreads_) throw std::runtime_error("no more threads to start " + name);
    auto& thread = threads_.emplace_back([name, work = std::move(work)] {
        ::pthread_setname_np(::pthread_self(), name.substr(0, 15).c_str());
        try {
            work();
        } catch (std::exception const& error) {
            DebugLog(Error, "thread " + name + " ended: " + error.what());
        }
    });
    DebugLog(ThreadIds, "started " + name);
    return thread.get_id();
}

void ThreadFactory::Join(std::thread::id id) {
    std::thread thread;
    {
        std::lock_guard const lock(mutex_);
        auto const found =
            std::find_if(threads_.begin(), threads_.end(), [&](auto const& entry) { return entry.get_id() == id; });
        if (found == threads_.end()) return;
        thread = std::move(*found);
        threads_.erase(found);
    }
    thread.join();
}
