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

void DrawingThreads::Add(QueuedLabel label) {
    auto& slot = *slots_.emplace_back(std::make_unique<Slot>(std::move(label)));
    bytes_ += slot.bytes;
    // To wake a thread costs as much as a small label.
    bool isWorthIt = false;
    {
        std::lock_guard const lock(mutex_);
        waiting_.push_back(&slot);
        SetFirst(0);
        waitingWork_ += slot.work;
        // The more threads draw, the sooner they will come to it; and to start the first one costs as much as some
        // labels.
        std::size_t const threads = threads_.empty() ? 3 : threads_.size() - free_ + 1;
        isWorthIt = waiting_.size() > FewLabels * threads || waitingWork_ > LittleWork * threads;
    }
    if (isWorthIt && slots_.size() > 1) WakeThread();
}

/// Lets one more thread draw. One is started if none is free, and the machine gives it.
void DrawingThreads::WakeThread() {
    bool isFree = false;
    {
        std::lock_guard const lock(mutex_);
        isFree = free_ != 0;
        if (!isFree && threads_.size() < work_.mostThreads) ++free_;
    }
    if (isFree) return label_.notify_one();
    if (threads_.size() == work_.mostThreads) return;
    try {
        auto& drawer = *drawers_.emplace_back(work_.makeDrawer());
        threads_.emplace_back([this, &drawer] { Run(drawer); });
    } catch (std::system_error const&) {
        std::lock_guard const lock(mutex_);
        --free_;
    }
}

bool DrawingThreads::Tell(Telling telling) {
    auto& behind = slots_.back()->behind;
    behind.push_back(std::move(telling));
    if (behind.size() < MostTellings) return true;
    if (threads_.empty()) WakeThread();
    return threads_.empty() || Settle(true);
}

bool DrawingThreads::Settle(bool all) {
    // Not each page alone, as the threads' lock costs as much as a small label.
    bool const areFew = slots_.size() <= FewLabels && bytes_ <= mostBytes_ / 2;
    if (!all && areFew) return true;
    while (!slots_.empty()) {
        Slot& first = *slots_.front();
        if (threads_.empty()) {
            if (!all && !IsFull()) return true;
            DrawFirstHere();
            continue;
        }
        if (!TakePages(first)) {
            if (!all && !IsFull()) return true;
            WaitForPages();
            continue;
        }
        if (first.isInterrupted) return false;
        auto const ended = DropFirst();
        KeepRoom(std::move(ended->label.drawn.page));
        for (auto const& telling : ended->behind) work_.tell(telling);
    }
    return true;
}

/// Waits until half of the labels have been drawn, as to wake the owner costs as much as a small label, or a thread
/// cannot go on before its pages are taken.
void DrawingThreads::WaitForPages() {
    std::unique_lock lock(mutex_);
    awaited_ = slots_[slots_.size() / 2].get();
    label_.notify_all();
    page_.wait(lock, [this] { return IsOwnerNeeded(); });
    awaited_ = nullptr;
}

bool DrawingThreads::IsOwnerNeeded() const {
    if (!awaited_) return false;
    return awaited_->hasEnded || (crowded_ != 0 && (first_->hasEnded || !first_->pages.empty()));
}

/// Passes on what the first label has given. Whether that was all.
bool DrawingThreads::TakePages(Slot& first) {
    std::unique_lock lock(mutex_);
    auto pages = std::exchange(first.pages, {});
    for (auto const& page : pages) pageBytes_ -= page.Bytes();
    bool const hasEnded = first.hasEnded;
    if (hasEnded) SetFirst(1);
    bool const wasCrowded = crowded_ != 0;
    lock.unlock();
    if (wasCrowded) room_.notify_all();
    for (auto& page : pages) Pass(first, std::move(page));
    return hasEnded;
}

void DrawingThreads::Pass(Slot const& slot, DrawnPage page) const {
    for (auto const& telling : page.tellings) work_.tell(telling);
    if (page.failure) std::rethrow_exception(page.failure);
    if (page.page) work_.keepPage(slot.label.task, std::move(*page.page), std::move(page.copy));
}

/// No other label has followed, or the machine gives no threads.
void DrawingThreads::DrawFirstHere() {
    auto const first = DropFirst();
    waiting_.pop_front();
    waitingWork_ -= first->work;
    SetFirst(0);
    work_.drawHere(std::move(first->label));
    for (auto const& telling : first->behind) work_.tell(telling);
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
    if (rooms_.empty()) return nullptr;
    auto room = std::move(rooms_.back());
    rooms_.pop_back();
    roomBytes_ -= room->Bytes();
    return room;
}

void DrawingThreads::Run(LabelDrawer& drawer) {
    for (;;) {
        std::unique_lock lock(mutex_);
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
        slot.label.drawn.page = std::move(label.drawn.page);
        slot.hasEnded = true;
        slot.isInterrupted = !goesOn;
        ++free_;
        if (IsOwnerNeeded()) page_.notify_one();
    }
}

/// False if nobody takes it any more.
bool DrawingThreads::Put(Slot& slot, DrawnPage page) {
    std::size_t const bytes = page.Bytes();
    std::unique_lock lock(mutex_);
    auto const fits = [&] {
        bool const isFirst = &slot == first_ && slot.pages.empty();
        return isOver_ || isFirst || (slot.pages.size() < MostPages && pageBytes_ + bytes <= MostPageBytes);
    };
    if (!fits()) {
        ++crowded_;
        if (IsOwnerNeeded()) page_.notify_one();
        room_.wait(lock, fits);
        --crowded_;
    }
    if (isOver_) return false;
    slot.pages.push_back(std::move(page));
    pageBytes_ += bytes;
    if (IsOwnerNeeded()) page_.notify_one();
    return true;
}
