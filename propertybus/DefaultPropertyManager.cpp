#include "propertybus/DefaultPropertyManager.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "foundation/DebugZones.h"
#include "propertybus/ThreadFactory.h"

namespace {

std::string Name(PropertyAddress const& address) { return address.component + '/' + address.property; }

void RunGuarded(std::function<void()> const& work) {
    try {
        work();
    } catch (std::exception const& error) {
        DebugLog(Error, std::string("a property callback failed: ") + error.what());
    }
}

}  // namespace

DefaultPropertyManager::~DefaultPropertyManager() { StopThread(); }

void DefaultPropertyManager::StartThread() {
    {
        std::lock_guard const lock(mutex_);
        if (running_ || !threads_) return;
        running_ = true;
        stopping_ = false;
    }
    thread_ = threads_->StartThread("properties", [this] { Run(); });
}

void DefaultPropertyManager::StopThread() {
    {
        std::lock_guard const lock(mutex_);
        if (!running_) return;
        running_ = false;
        stopping_ = true;
    }
    wakeDelivery_.notify_all();
    threads_->Join(thread_);
    std::unique_lock lock(mutex_);
    isTurnWanted_ = true;
    wakeDelivery_.wait(lock, [this] { return !isDelivering_; });
}

void DefaultPropertyManager::SetSender(Sender sender) {
    std::lock_guard const lock(senderMutex_);
    sender_ = std::move(sender);
}

/// Gives the link that takes the message; 0 if there is none, or another than is asked for.
unsigned DefaultPropertyManager::Send(PiclMessage const& message, unsigned link) {
    std::lock_guard const lock(senderMutex_);
    bool const isUp = link == AnyLink || link == link_;
    return isUp && sender_ && sender_(message) ? link_ : 0;
}

unsigned DefaultPropertyManager::Link() const {
    std::lock_guard const lock(senderMutex_);
    return link_;
}

void DefaultPropertyManager::Run() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        std::function<void()> next;
        if (isDelivering_) {
            isTurnWanted_ = true;
            wakeDelivery_.wait(lock);
            continue;
        }
        if (!work_.empty()) {
            next = std::move(work_.front());
            work_.pop_front();
            DeliverInTurn(lock, next);
        } else if (!laterWork_.empty() && laterWork_.begin()->first <= std::chrono::steady_clock::now()) {
            next = std::move(laterWork_.begin()->second);
            laterWork_.erase(laterWork_.begin());
            // Delivers nothing, so the link need not wait for it.
            lock.unlock();
            RunGuarded(next);
            lock.lock();
        } else if (!laterWork_.empty()) {
            wakeDelivery_.wait_until(lock, laterWork_.begin()->first);
        } else {
            wakeDelivery_.wait(lock);
        }
    }
}

/// To be called under the lock, which it gives up meanwhile.
void DefaultPropertyManager::DeliverInTurn(std::unique_lock<std::mutex>& lock, std::function<void()> const& work) {
    isDelivering_ = true;
    lock.unlock();
    RunGuarded(work);
    lock.lock();
    isDelivering_ = false;
    if (std::exchange(isTurnWanted_, false) || !work_.empty()) wakeDelivery_.notify_all();
}

void DefaultPropertyManager::RunLater(std::chrono::milliseconds pause, std::function<void()> work) {
    {
        std::lock_guard const lock(mutex_);
        laterWork_.emplace(std::chrono::steady_clock::now() + pause, std::move(work));
    }
    wakeDelivery_.notify_all();
}

void DefaultPropertyManager::Post(PiclMessage message) {
    {
        std::lock_guard const lock(mutex_);
        work_.emplace_back([this, message = std::move(message)] { Deliver(message); });
    }
    wakeDelivery_.notify_all();
}

void DefaultPropertyManager::Take(PiclMessage const& message) {
    std::unique_lock lock(mutex_);
    if (running_ && !isDelivering_ && work_.empty()) return DeliverInTurn(lock, [&] { Deliver(message); });
    lock.unlock();
    Post(message);
}

void DefaultPropertyManager::HoldWrites() {
    unsigned link = 0;
    {
        std::lock_guard const lock(senderMutex_);
        link = ++link_;
    }
    std::vector<std::shared_ptr<Property>> properties;
    {
        std::lock_guard const lock(mutex_);
        for (auto const& [address, entry] : entries_) {
            if (entry.property) properties.push_back(entry.property);
        }
    }
    for (auto const& property : properties) property->HoldWrites(link);
}

void DefaultPropertyManager::PostLinkUp() {
    isLinked_ = true;
    unsigned const link = Link();
    {
        std::lock_guard const lock(mutex_);
        work_.emplace_back([this, link] { AnnounceAll(link); });
    }
    wakeDelivery_.notify_all();
}

std::shared_ptr<Property> DefaultPropertyManager::FindOnBus(PropertyAddress const& address) const {
    std::lock_guard const lock(mutex_);
    auto const found = entries_.find(address);
    return found == entries_.end() ? nullptr : found->second.property;
}

bool DefaultPropertyManager::ConnectToBus(PropertyAddress const& address, std::shared_ptr<Property> property, Role role,
                                          bool archived) {
    property->ConnectWriter([this, address](std::string const& value) {
        return Send({.type = PiclMessage::Type::Set, .address = address, .value = value}) != 0;
    });
    Entry entry;
    {
        std::lock_guard const lock(mutex_);
        auto& known = entries_[address];
        known.property = std::move(property);
        known.role = role;
        known.archived = archived;
        known.answered = false;
        known.number = entries_.size();
        entry = known;
    }
    unsigned const link = Announce(address, entry);
    std::lock_guard const lock(mutex_);
    auto& announced = entries_[address].link;
    announced = std::max(announced, link);
    return link != 0;
}

unsigned DefaultPropertyManager::Announce(PropertyAddress const& address, Entry const& entry, unsigned link) {
    if (entry.role == Role::Owner) {
        auto const& property = *entry.property;
        return Send({PiclMessage::Type::Publish, address, property.TextToPublish(), property.Name().label,
                     property.Kind(), entry.archived},
                    link);
    }
    return Send({.type = PiclMessage::Type::Subscribe, .address = address}, link);
}

/// Those who follow this process hear of its writes in their order, and find it listening by then. All of it is for one
/// link: on another that comes up meanwhile everything is said again, and a write sent twice there would be taken for
/// done at the first of its two answers.
void DefaultPropertyManager::AnnounceAll(unsigned link) {
    if (link != Link()) return;
    // Nobody writes meanwhile: such a write could be told before an earlier one of a property whose turn is yet to
    // come.
    auto const turn = Property::TakeTurn();
    struct Known {
        PropertyAddress address;
        Entry entry;
        std::uint64_t lastWrite;
    };
    std::vector<Known> all;
    {
        std::lock_guard const lock(mutex_);
        for (auto& [address, entry] : entries_) {
            if (entry.link >= link) continue;
            entry.link = link;
            entry.answered = entry.available = false;
            all.push_back({address, entry, 0});
        }
    }
    for (auto& known : all) known.lastWrite = known.entry.property ? known.entry.property->LastWrite() : 0;
    std::ranges::stable_sort(all, {}, &Known::lastWrite);
    for (auto const& [address, entry, lastWrite] : all) {
        // What this process wrote goes first: an older value that somebody else still holds must not undo it.
        if (entry.property && entry.role == Role::Follower) entry.property->Resend(link);
    }
    std::ranges::stable_sort(all, {}, [](Known const& known) { return known.entry.number; });
    for (auto const& [address, entry, lastWrite] : all) {
        if (entry.role == Role::Follower) Announce(address, entry, link);
    }
    std::ranges::stable_sort(all, {}, &Known::lastWrite);
    for (auto const& [address, entry, lastWrite] : all) {
        if (entry.role != Role::Owner) continue;
        // A value goes ahead of its publication: whoever is told of it may write the next one, which the owner takes
        // over as it publishes. An event goes behind, as a value that answers a subscription is none.
        bool const isEvent = entry.property->EveryWriteCounts();
        if (!isEvent) entry.property->Resend(link);
        Announce(address, entry, link);
        if (isEvent) entry.property->Resend(link);
    }
}

/// The first value of a link, or of an owner that has come back, is what was there before.
bool DefaultPropertyManager::AnswersSubscription(PropertyAddress const& address) const {
    std::lock_guard const lock(mutex_);
    auto const found = entries_.find(address);
    return found != entries_.end() && found->second.role == Role::Follower && !found->second.available;
}

void DefaultPropertyManager::Deliver(PiclMessage const& message) {
    if (message.type == PiclMessage::Type::Refused) {
        DebugLog(PropertyWarning, "the property server refused: " + message.value);
        return;
    }
    std::shared_ptr<Property> property = FindOnBus(message.address);
    if (message.type == PiclMessage::Type::Taken) {
        if (property) property->NoteTaken();
        return;
    }
    bool const hasValue = message.type == PiclMessage::Type::Changed;
    if (property && hasValue) {
        DebugLog(Property, Name(message.address) + " = " + message.value.substr(0, 80));
        if (!property->TakeFromBus(message.value, AnswersSubscription(message.address)))
            DebugLog(PropertyWarning, Name(message.address) + " was given a value that is none of its kind");
    }
    {
        std::lock_guard const lock(mutex_);
        auto& entry = entries_[message.address];
        entry.answered = true;
        entry.available = hasValue;
    }
    stateChanged_.notify_all();
}

bool DefaultPropertyManager::WaitForAnswer(PropertyAddress const& address, std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    return running_ &&
           stateChanged_.wait_for(lock, timeout, [&] { return waitingCancelled_ || entries_[address].answered; }) &&
           entries_[address].answered;
}

bool DefaultPropertyManager::WaitUntilAvailable(PropertyAddress const& address, std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    bool const isNew = !entries_.contains(address);
    entries_[address];
    if (isNew) {
        lock.unlock();
        Send({.type = PiclMessage::Type::Subscribe, .address = address});
        lock.lock();
    }
    auto const isDone = [&] { return waitingCancelled_ || entries_[address].available; };
    if (timeout == std::chrono::milliseconds::max()) {
        stateChanged_.wait(lock, isDone);
    } else {
        stateChanged_.wait_for(lock, timeout, isDone);
    }
    return entries_[address].available;
}

void DefaultPropertyManager::CancelWaiting() {
    {
        std::lock_guard const lock(mutex_);
        waitingCancelled_ = true;
    }
    stateChanged_.notify_all();
}
