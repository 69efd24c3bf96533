#pragma once

#include <QtCore/QObject>
#include <condition_variable>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "library/DeskSettings.h"

class FormatDrawer;

/// Draws labels for surfaces on a thread of its own, which starts with the first order. The newest order comes first,
/// and of several under one key the last one counts. Lives on the main thread.
class DrawingThread : public QObject {
public:
    /// What an order gives: called on the main thread, unless who ordered is gone.
    using Result = std::function<void()>;
    /// An order: run on the thread. It catches what it throws.
    using Work = std::function<Result(FormatDrawer&)>;

    explicit DrawingThread(DeskSettings settings) : settings_(std::move(settings)) {}
    /// Waits for the order under way; those that wait are dropped.
    ~DrawingThread() override;

    void Order(QObject* who, std::string key, Work work);

private:
    using Client = unsigned;  ///< never comes twice, as the place of an object may
    struct Waiting {
        Client who;
        std::string key;
        Work work;
    };

    void Run();
    Client ClientOf(QObject* who);
    void Drop(QObject* who);
    void Deliver(Client who, Result const& result);

    DeskSettings const settings_;
    std::map<QObject*, Client> clients_;
    Client newest_ = 0;
    std::mutex mutex_;  ///< guards what follows
    std::condition_variable wake_;
    std::list<Waiting> waiting_;  ///< the newest first
    bool ends_ = false;
    std::thread thread_;
};
