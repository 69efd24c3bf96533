#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

#include "propertybus/PICLServerAgent.h"
#include "propertybus/Property.h"

class ThreadFactory;

/// The properties that this process has on the bus, its own and others', and the delivery of what the server says of
/// them: one message after the other, in the order of their arrival. Callbacks of values from the bus run on the thread
/// of the link where nothing waits, which spares a change of threads, and else on a thread of their own.
class DefaultPropertyManager {
public:
    /// Puts a message into the way of the server; false if there is no link.
    using Sender = std::function<bool(PiclMessage const&)>;

    explicit DefaultPropertyManager(ThreadFactory* threads) : threads_(threads) {}
    virtual ~DefaultPropertyManager();

    /// Starts delivery; once.
    void StartThread();
    /// Ends delivery; what has not been delivered is dropped.
    virtual void StopThread();

    /// Set before anything is published; the sender outlives the manager's use of it, or is taken away by an empty one.
    void SetSender(Sender sender);

    /// Delivers what the link received, on this thread if that is its turn. For the thread of the link, which holds no
    /// lock.
    void Take(PiclMessage const& message);
    /// Queues a message. Any thread.
    void Post(PiclMessage message);
    /// A link comes up, and is to be the only one: what is written waits until PostLinkUp has everything said again.
    /// Any thread.
    void HoldWrites();
    /// That link is up: says everything again. Any thread.
    void PostLinkUp();
    /// The link is lost. Any thread.
    void NoteLinkLost() { isLinked_ = false; }
    /// Whether there is a link; without one nobody is told what has become of the properties of others.
    bool IsLinked() const { return isLinked_; }

    /// The property at an address, if this process has it.
    std::shared_ptr<Property> FindOnBus(PropertyAddress const& address) const;

    /// As in PICLServerAgent.
    bool WaitUntilAvailable(PropertyAddress const& address, std::chrono::milliseconds timeout);
    void CancelWaiting();

protected:
    enum class Role { Owner, Follower };
    /// False if there is no link yet: the property is announced when there is one.
    bool ConnectToBus(PropertyAddress const& address, std::shared_ptr<Property> property, Role role, bool archived);
    /// Waits for the server's answer to a subscription.
    bool WaitForAnswer(PropertyAddress const& address, std::chrono::milliseconds timeout);
    /// Has `work` run on the manager's thread after the pause, beside the delivery.
    void RunLater(std::chrono::milliseconds pause, std::function<void()> work);

private:
    struct Entry {
        std::shared_ptr<Property> property;  ///< null if this process only waits for it
        Role role = Role::Follower;
        bool archived = false;
        bool answered = false;
        bool available = false;
        unsigned link = 0;       // on which it was announced last
        std::size_t number = 0;  // in the order in which they were made
    };

    unsigned Send(PiclMessage const& message, unsigned link = AnyLink);
    unsigned Link() const;
    unsigned Announce(PropertyAddress const& address, Entry const& entry, unsigned link = AnyLink);
    void Run();
    void DeliverInTurn(std::unique_lock<std::mutex>& lock, std::function<void()> const& work);
    bool AnswersSubscription(PropertyAddress const& address) const;
    void Deliver(PiclMessage const& message);
    void AnnounceAll(unsigned link);

    static constexpr unsigned AnyLink = 0;

    ThreadFactory* threads_;
    std::thread::id thread_;
    mutable std::mutex mutex_;
    std::condition_variable wakeDelivery_;
    std::condition_variable stateChanged_;
    std::deque<std::function<void()>> work_;
    std::multimap<std::chrono::steady_clock::time_point, std::function<void()>> laterWork_;
    std::map<PropertyAddress, Entry> entries_;
    bool isDelivering_ = false;
    bool isTurnWanted_ = false;  // by somebody who waits until nothing is delivered
    bool stopping_ = false;
    bool running_ = false;
    bool waitingCancelled_ = false;
    mutable std::mutex senderMutex_;
    Sender sender_;
    std::atomic<bool> isLinked_{false};
    unsigned link_ = 1;  // that is up or comes up next, counted
};
