#include "plugin/surfaces/DrawingThread.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

#include "foundation/DebugZones.h"
#include "library/forms/DrawnFormat.h"

DrawingThread::~DrawingThread() {
    {
        std::lock_guard const lock(mutex_);
        ends_ = true;
        waiting_.clear();
    }
    wake_.notify_all();
    if (thread_.joinable()) thread_.join();
}

void DrawingThread::Order(QObject* who, std::string key, Work work) {
    Client const client = ClientOf(who);
    std::lock_guard const lock(mutex_);
    waiting_.remove_if([&](auto const& order) { return order.who == client && order.key == key; });
    waiting_.push_front({client, std::move(key), std::move(work)});
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    wake_.notify_all();
}

DrawingThread::Client DrawingThread::ClientOf(QObject* who) {
    auto const [client, isNew] = clients_.try_emplace(who, newest_ + 1);
    if (isNew) {
        ++newest_;
        connect(who, &QObject::destroyed, this, [this, who] { Drop(who); });
    }
    return client->second;
}

void DrawingThread::Drop(QObject* who) {
    Client const client = clients_.at(who);
    clients_.erase(who);
    std::lock_guard const lock(mutex_);
    waiting_.remove_if([client](auto const& order) { return order.who == client; });
}

void DrawingThread::Deliver(Client who, Result const& result) {
    bool const isThere =
        std::any_of(clients_.begin(), clients_.end(), [who](auto const& entry) { return entry.second == who; });
    if (result && isThere) result();
}

void DrawingThread::Run() {
    std::unique_ptr<FormatDrawer> drawer;
    for (;;) {
        std::unique_lock lock(mutex_);
        wake_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
        if (ends_) return;
        auto const order = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        try {
            if (!drawer) drawer = std::make_unique<FormatDrawer>(settings_);
            auto result = order.work(*drawer);
            QMetaObject::invokeMethod(
                this, [this, who = order.who, result = std::move(result)] { Deliver(who, result); },
                Qt::QueuedConnection);
        } catch (std::exception const& error) {
            DebugLog(Warning, std::string("a label for the screen cannot be drawn: ") + error.what());
        }
    }
}
