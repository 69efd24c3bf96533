#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "desktop/LabelDrawer.h"

/// Draws labels on threads, which also hand on their pages, in the order of the labels: whichever of them has finished
/// what comes next does it for all that is finished behind it. So the thread that owns it, which reads the stream, has
/// nothing to do for a page. Each thread has a LabelDrawer. A thread is started when a label waits and none is free:
/// none for the first label, which the owner draws itself if no other follows.
///
/// Memory is bounded: the owner waits when labels are many or large, and a thread when its pages are, until those of
/// the labels before them have been handed on.
class DrawingThreads {
public:
    /// Bytes of commands that are not worth waking a thread for.
    static constexpr std::size_t LittleWork = std::size_t{1} << 11;

    /// What is called by one thread at a time, of which what it did happens before what the next one does, is marked
    /// as in turn: the owner is one of them while no label waits.
    struct Work {
        unsigned mostThreads;
        std::optional<VirtualTag> const& tag;
        std::function<std::unique_ptr<LabelDrawer>()> makeDrawer;               ///< called by the owner
        StagePage stage;                                                        ///< called by threads
        std::function<void(QueuedLabel)> drawHere;                              ///< draws a label on the owner's thread
        std::function<void(Telling const&)> tell;                               ///< called in turn
        std::function<void(LabelTask const&, StagedPage, DrawnCopy)> keepPage;  ///< called in turn
    };

    explicit DrawingThreads(Work work) : work_(std::move(work)) {}
    /// Gives up what is not drawn yet, and the pages that were not handed on.
    ~DrawingThreads();
    DrawingThreads(DrawingThreads const&) = delete;
    DrawingThreads& operator=(DrawingThreads const&) = delete;

    /// Whether all labels have been dealt with.
    bool IsEmpty();
    /// Room for the page of a label that is going to be added: that of one before; null if there is none.
    std::unique_ptr<Scripting::HandedLabel> TakeRoom();
    void Add(QueuedLabel label);
    /// Tells behind the label that was added last, at once if that has been dealt with. When much waits to be told it
    /// settles all, on threads alone: it may be called amid a label. False when the run has been interrupted.
    bool Tell(Telling telling);
    /// Waits until all labels have been dealt with, or without `all` until another one can be added. False when the run
    /// has been interrupted: nothing further comes. Throws what was thrown for a page.
    bool Settle(bool all);

private:
    /// A label with its pages.
    struct Slot {
        explicit Slot(QueuedLabel label);

        QueuedLabel label;      ///< without what a thread has taken of it
        std::size_t bytes = 0;  ///< of its commands and its drawn page
        std::size_t work = 0;   ///< about, in bytes of commands that are drawn
        std::vector<DrawnPage> pages;
        std::vector<Telling> behind;
        bool hasEnded = false;
        bool isInterrupted = false;
    };
    using Lock = std::unique_lock<std::mutex>;

    // All of these are called under the lock.
    bool IsFull() const { return slots_.size() >= MostLabels || bytes_ > mostBytes_; }
    bool IsGivenUp() const { return isOver_ || isInterrupted_ || failure_; }
    void WakeThread(Lock lock);
    void DrawFirstHere(Lock& lock);
    std::unique_ptr<Slot> DropFirst();
    void KeepRoom(std::unique_ptr<Scripting::HandedLabel> room);
    // What threads do.
    void Run(LabelDrawer& drawer);
    bool Put(Slot& slot, DrawnPage page);
    void HandOn(Lock& lock);
    bool HandOnOf(Slot& first, Lock& lock);
    void Pass(Slot const& slot, std::vector<DrawnPage> pages, std::vector<Telling> const& behind) const;

    static constexpr std::size_t MostLabels = 64;
    static constexpr std::size_t MostBytes = std::size_t{4} << 20;  // of commands and drawn pages, and
    static constexpr std::size_t MostBytesPerThread = std::size_t{2} << 20;
    static constexpr std::size_t FewLabels = 8;   // a thread is woken for more of them, or for more work
    static constexpr std::size_t MostPages = 32;  // of a label
    static constexpr std::size_t MostPageBytes = std::size_t{4} << 20;  // of all pages that wait in memory
    static constexpr std::size_t MostTellings = 1000;

    Work const work_;
    std::size_t const mostBytes_ = MostBytes + work_.mostThreads * MostBytesPerThread;

    std::mutex mutex_;                         ///< guards what follows, but for the threads
    std::condition_variable label_;            ///< one waits
    std::condition_variable room_;             ///< pages have been handed on
    std::condition_variable few_;              ///< as few labels are left as the owner waits for
    std::deque<std::unique_ptr<Slot>> slots_;  ///< in the order of the labels; pages of the first always find room
    std::size_t bytes_ = 0;                    ///< of what labels hold
    std::vector<std::unique_ptr<Scripting::HandedLabel>> rooms_;
    std::size_t roomBytes_ = 0;
    std::deque<Slot*> waiting_;  ///< no thread has begun them
    std::size_t waitingWork_ = 0;
    unsigned crowded_ = 0;               ///< threads that wait for room
    std::size_t pageBytes_ = 0;          ///< of pages that wait in memory
    std::optional<std::size_t> wanted_;  ///< how many labels at most the owner waits to be left
    std::size_t free_ = 0;               ///< threads without a label
    bool isHandingOn_ = false;           ///< a thread is, and looks again before it ends that
    bool isInterrupted_ = false;         ///< nothing is handed on any more
    std::exception_ptr failure_;         ///< likewise; for the owner
    bool isOver_ = false;
    std::vector<std::unique_ptr<LabelDrawer>> drawers_;
    std::vector<std::thread> threads_;
};
