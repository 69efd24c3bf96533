#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "desktop/LabelDrawer.h"

/// Draws labels on threads, and gives their pages in the order of the labels to the thread that owns it, which reads
/// the stream. Each thread has a LabelDrawer. A thread is started when a label waits and none is free: none for the
/// first label, which the owner draws itself if no other follows.
///
/// Memory is bounded: the owner waits when labels are many or large, and a thread when its pages are, until those of
/// the labels before them have been taken.
class DrawingThreads {
public:
    /// Bytes of commands that are not worth waking a thread for.
    static constexpr std::size_t LittleWork = std::size_t{1} << 11;

    struct Work {
        unsigned mostThreads;
        std::optional<VirtualTag> const& tag;
        std::function<std::unique_ptr<LabelDrawer>()> makeDrawer;               ///< called by the owner
        StagePage stage;                                                        ///< called by threads
        std::function<void(QueuedLabel)> drawHere;                              ///< draws a label on the owner's thread
        std::function<void(Telling const&)> tell;                               ///< called by the owner
        std::function<void(LabelTask const&, StagedPage, DrawnCopy)> keepPage;  ///< called by the owner
    };

    explicit DrawingThreads(Work work) : work_(std::move(work)) {}
    /// Gives up what is not drawn yet, and the pages that were not asked for.
    ~DrawingThreads();
    DrawingThreads(DrawingThreads const&) = delete;
    DrawingThreads& operator=(DrawingThreads const&) = delete;

    /// Whether all labels have been dealt with.
    bool IsEmpty() const { return slots_.empty(); }
    /// Room for the page of a label that is going to be added: that of one before; null if there is none.
    std::unique_ptr<Scripting::HandedLabel> TakeRoom();
    void Add(QueuedLabel label);
    /// Tells behind the label that was added last. When much waits to be told it settles all, on threads alone: it may
    /// be called amid a label. False when the run has been interrupted.
    bool Tell(Telling telling);
    /// Deals with what has been drawn, in order. With `all` it waits for all labels, otherwise for as many that another
    /// one can be added. False when the run has been interrupted: nothing further comes. Throws what `keepPage` throws.
    bool Settle(bool all);

private:
    /// A label with its pages.
    struct Slot {
        explicit Slot(QueuedLabel label);

        QueuedLabel label;            ///< without what a thread has taken of it
        std::size_t bytes = 0;        ///< of its commands and its drawn page
        std::size_t work = 0;         ///< about, in bytes of commands that are drawn
        std::vector<Telling> behind;  ///< the owner's alone
        // Changed under the lock.
        std::vector<DrawnPage> pages;
        bool hasEnded = false;
        bool isInterrupted = false;
    };

    bool IsFull() const { return slots_.size() >= MostLabels || bytes_ > mostBytes_; }
    void WakeThread();
    void DrawFirstHere();
    void SetFirst(std::size_t index) { first_ = index < slots_.size() ? slots_[index].get() : nullptr; }
    void WaitForPages();
    bool TakePages(Slot& first);
    void Pass(Slot const& slot, DrawnPage page) const;
    std::unique_ptr<Slot> DropFirst();
    void KeepRoom(std::unique_ptr<Scripting::HandedLabel> room);
    // What threads do.
    void Run(LabelDrawer& drawer);
    bool Put(Slot& slot, DrawnPage page);
    bool IsOwnerNeeded() const;

    static constexpr std::size_t MostLabels = 64;
    static constexpr std::size_t MostBytes = std::size_t{4} << 20;  // of commands and drawn pages, and
    static constexpr std::size_t MostBytesPerThread = std::size_t{2} << 20;
    static constexpr std::size_t FewLabels = 8;   // a thread is woken for more of them, or for more work
    static constexpr std::size_t MostPages = 32;  // of a label
    static constexpr std::size_t MostPageBytes = std::size_t{4} << 20;  // of all pages that wait in memory
    static constexpr std::size_t MostTellings = 1000;

    Work const work_;
    std::deque<std::unique_ptr<Slot>> slots_;  ///< in the order of the labels
    std::size_t bytes_ = 0;                    ///< of what labels hold
    std::size_t const mostBytes_ = MostBytes + work_.mostThreads * MostBytesPerThread;
    std::vector<std::unique_ptr<Scripting::HandedLabel>> rooms_;
    std::size_t roomBytes_ = 0;

    std::mutex mutex_;               ///< guards what follows, but for the threads
    std::condition_variable label_;  ///< one waits
    std::condition_variable room_;   ///< pages have been taken
    std::condition_variable page_;   ///< the awaited label has given something
    std::deque<Slot*> waiting_;      ///< no thread has begun them
    std::size_t waitingWork_ = 0;
    unsigned crowded_ = 0;           ///< threads that wait for room
    Slot const* first_ = nullptr;    ///< of the labels; its pages always find room
    std::size_t pageBytes_ = 0;      ///< of pages that wait in memory
    Slot const* awaited_ = nullptr;  ///< by the owner
    std::size_t free_ = 0;           ///< threads without a label
    bool isOver_ = false;
    std::vector<std::unique_ptr<LabelDrawer>> drawers_;
    std::vector<std::thread> threads_;
};
