#include "desktop/DrawingThreads.h"

#include <system_error>
#include <utility>

DrawingThreads::Slot::Slot(QueuedLabel queued) : label(std::move(queued)) {
    // Of a label that is drawn its page is left to do, about as much as so many commands.
    constexpr std::size_t BytesPerByteOfCommands = 512;
    std::size_t const commands = label.isUsedUp ? 0 : label.task.label.CommandBytes();
    std::size_t const page = label.drawn.page ? label.drawn.page->Bytes() : 0;
    bytes = commands + page;
    work = commands * label.task.copies + page / BytesPerByteOfCommands;
}

DrawingThreads::~DrawingThreads() {
    {
        std::lock_guard const lock(mutex_);
        isOver_ = true;
    }
    label_.notify_all();
    room_.notify_all();
    for (auto& thread : threads_) thread.join();
}

bool DrawingThreads::IsEmpty() {
    std::lock_guard const lock(mutex_);
    return slots_.empty();
}

void DrawingThreads::Add(QueuedLabel label) {
    auto added = std::make_unique<Slot>(std::move(label));
    Lock lock(mutex_);
    auto& slot = *slots_.emplace_back(std::move(added));
    bytes_ += slot.bytes;
    waiting_.push_back(&slot);
    waitingWork_ += slot.work;
    // To wake a thread costs as much as a small label. The more threads draw, the sooner they will come to it; and to
    // start the first one costs as much as some labels.
    std::size_t const threads = threads_.empty() ? 3 : threads_.size() - free_ + 1;
    bool const isWorthIt = waiting_.size() > FewLabels * threads || waitingWork_ > LittleWork * threads;
    bool const isAlone = threads_.empty() && slots_.size() == 1;
    if (isWorthIt && !isAlone) WakeThread(std::move(lock));
}

/// Lets one more thread draw. One is started if none is free, and the machine gives it.
void DrawingThreads::WakeThread(Lock lock) {
    bool const isFree = free_ != 0;
    if (!isFree && threads_.size() == work_.mostThreads) return;
    if (!isFree) ++free_;
    lock.unlock();
    if (isFree) return label_.notify_one();
    try {
        auto& drawer = *drawers_.emplace_back(work_.makeDrawer());
        threads_.emplace_back([this, &drawer] { Run(drawer); });
    } catch (std::system_error const&) {
        lock.lock();
        --free_;
    }
}

bool DrawingThreads::Tell(Telling telling) {
    Lock lock(mutex_);
    if (slots_.empty()) {
        lock.unlock();
        work_.tell(telling);
        return true;
    }
    auto& behind = slots_.back()->behind;
    behind.push_back(std::move(telling));
    if (behind.size() < MostTellings) return true;
    if (threads_.empty()) {
        WakeThread(std::move(lock));
    } else {
        lock.unlock();
    }
    return threads_.empty() || Settle(true);
}

bool DrawingThreads::Settle(bool all) {
    Lock lock(mutex_);
    for (;;) {
        if (failure_) std::rethrow_exception(failure_);
        if (isInterrupted_) return false;
        if (slots_.empty() || (!all && !IsFull())) return true;
        if (threads_.empty()) {
            DrawFirstHere(lock);
            continue;
        }
        // Until half of the labels have been dealt with, as to wake the owner costs as much as a small label.
        wanted_ = all ? 0 : slots_.size() / 2;
        label_.notify_all();
        few_.wait(lock, [this] { return slots_.size() <= *wanted_ || IsGivenUp(); });
        wanted_.reset();
    }
}

/// No other label has followed, or the machine gives no threads.
void DrawingThreads::DrawFirstHere(Lock& lock) {
    auto const first = DropFirst();
    waiting_.pop_front();
    waitingWork_ -= first->work;
    lock.unlock();
    work_.drawHere(std::move(first->label));
    for (auto const& telling : first->behind) work_.tell(telling);
    lock.lock();
}

std::unique_ptr<DrawingThreads::Slot> DrawingThreads::DropFirst() {
    auto first = std::move(slots_.front());
    slots_.pop_front();
    bytes_ -= first->bytes;
    return first;
}

void DrawingThreads::KeepRoom(std::unique_ptr<Scripting::HandedLabel> room) {
    if (!room || roomBytes_ + room->Bytes() > mostBytes_) return;
    roomBytes_ += room->Bytes();
    rooms_.push_back(std::move(room));
}

std::unique_ptr<Scripting::HandedLabel> DrawingThreads::TakeRoom() {
    std::lock_guard const lock(mutex_);
    if (rooms_.empty()) return nullptr;
    auto room = std::move(rooms_.back());
    rooms_.pop_back();
    roomBytes_ -= room->Bytes();
    return room;
}

void DrawingThreads::Run(LabelDrawer& drawer) {
    Lock lock(mutex_);
    for (;;) {
        label_.wait(lock, [this] { return isOver_ || !waiting_.empty(); });
        if (isOver_) return;
        --free_;
        Slot& slot = *waiting_.front();
        waiting_.pop_front();
        waitingWork_ -= slot.work;
        lock.unlock();
        QueuedLabel label = std::move(slot.label);
        bool const goesOn =
            drawer.Draw(label, work_.tag, work_.stage, [&](DrawnPage page) { return Put(slot, std::move(page)); });
        lock.lock();
        KeepRoom(std::move(label.drawn.page));
        slot.hasEnded = true;
        slot.isInterrupted = !goesOn;
        HandOn(lock);
        ++free_;
    }
}

/// False if nobody takes it any more.
bool DrawingThreads::Put(Slot& slot, DrawnPage page) {
    std::size_t const bytes = page.Bytes();
    Lock lock(mutex_);
    auto const fits = [&] {
        bool const isFirst = &slot == slots_.front().get() && slot.pages.empty();
        return IsGivenUp() || isFirst || (slot.pages.size() < MostPages && pageBytes_ + bytes <= MostPageBytes);
    };
    if (!fits()) {
        HandOn(lock);
        ++crowded_;
        room_.wait(lock, fits);
        --crowded_;
    }
    if (IsGivenUp()) return false;
    slot.pages.push_back(std::move(page));
    pageBytes_ += bytes;
    // The last page of a label is handed on with its end.
    if (slot.pages.size() > 1) HandOn(lock);
    return true;
}

/// Hands on what is finished of the first labels, unless another thread is at it.
void DrawingThreads::HandOn(Lock& lock) {
    if (isHandingOn_) return;
    isHandingOn_ = true;
    while (!slots_.empty() && !IsGivenUp() && HandOnOf(*slots_.front(), lock)) {
    }
    isHandingOn_ = false;
    if (!isInterrupted_ && !failure_) return;
    few_.notify_one();
    room_.notify_all();
}

/// Gives up the lock meanwhile. False if nothing of it is finished that has not been handed on.
bool DrawingThreads::HandOnOf(Slot& first, Lock& lock) {
    auto pages = std::exchange(first.pages, {});
    for (auto const& page : pages) pageBytes_ -= page.Bytes();
    if (crowded_ != 0) room_.notify_all();
    bool const goesOn = first.hasEnded && !first.isInterrupted;
    auto const behind = goesOn ? std::exchange(first.behind, {}) : std::vector<Telling>();
    if (pages.empty() && behind.empty()) {
        isInterrupted_ = first.isInterrupted;
        if (!goesOn) return false;
        auto dealtWith = DropFirst();
        if (wanted_ && slots_.size() <= *wanted_) few_.notify_one();
        lock.unlock();
        dealtWith.reset();
        lock.lock();
        return true;
    }
    lock.unlock();
    std::exception_ptr failure;
    try {
        Pass(first, std::move(pages), behind);
    } catch (...) {
        failure = std::current_exception();
    }
    lock.lock();
    failure_ = failure;
    return true;
}

void DrawingThreads::Pass(Slot const& slot, std::vector<DrawnPage> pages, std::vector<Telling> const& behind) const {
    for (auto& page : pages) {
        for (auto const& telling : page.tellings) work_.tell(telling);
        if (page.failure) std::rethrow_exception(page.failure);
        if (page.page) work_.keepPage(slot.label.task, std::move(*page.page), std::move(page.copy));
    }
    for (auto const& telling : behind) work_.tell(telling);
}
