#include "desktop/DrawingThreads.h"

#include <system_error>
#include <utility>

DrawingThreads::~DrawingThreads() {
    {
        std::lock_guard const lock(mutex_);
        isOver_ = true;
    }
    label_.notify_all();
    room_.notify_all();
    for (auto& thread : threads_) thread.join();
}

void DrawingThreads::Add(LabelTask task) {
    auto& slot = *slots_.emplace_back(std::make_unique<Slot>(std::move(task)));
    bytes_ += slot.bytes;
    bool isFree = false;
    {
        std::lock_guard const lock(mutex_);
        waiting_.push_back(&slot);
        isFree = free_ != 0;
    }
    if (isFree) label_.notify_one();
    if (slots_.size() > 1) StartThreads();
}

/// As many as there are labels that wait, if the machine gives them.
void DrawingThreads::StartThreads() {
    while (threads_.size() < work_.mostThreads) {
        {
            std::lock_guard const lock(mutex_);
            if (waiting_.size() <= free_) return;
            ++free_;
        }
        try {
            auto& drawer = *drawers_.emplace_back(work_.makeDrawer());
            threads_.emplace_back([this, &drawer] { Run(drawer); });
        } catch (std::system_error const&) {
            std::lock_guard const lock(mutex_);
            --free_;
            return;
        }
    }
}

bool DrawingThreads::Tell(Telling telling) {
    auto& behind = slots_.back()->behind;
    behind.push_back(std::move(telling));
    if (behind.size() < MostTellings) return true;
    StartThreads();
    return threads_.empty() || Settle(true);
}

bool DrawingThreads::Settle(bool all) {
    while (!slots_.empty()) {
        Slot& first = *slots_.front();
        if (threads_.empty()) {
            if (!all && slots_.size() == 1) return true;
            DrawFirstHere();
            continue;
        }
        bool const waits = all || IsFull();
        if (!TakePages(first, waits)) {
            if (!waits) return true;
            continue;
        }
        if (first.isInterrupted) return false;
        auto const ended = DropFirst();
        for (auto const& telling : ended->behind) work_.tell(telling);
    }
    return true;
}

/// Passes on what the first label has given. Whether that was all.
bool DrawingThreads::TakePages(Slot& first, bool waits) {
    std::unique_lock lock(mutex_);
    auto const gives = [&first] { return first.hasEnded || !first.pages.empty(); };
    if (waits && !gives()) {
        awaited_ = &first;
        page_.wait(lock, gives);
        awaited_ = nullptr;
    }
    auto pages = std::exchange(first.pages, {});
    first.pageBytes = 0;
    bool const hasEnded = first.hasEnded;
    lock.unlock();
    if (!pages.empty()) room_.notify_all();
    for (auto& page : pages) Pass(first, std::move(page));
    return hasEnded;
}

void DrawingThreads::Pass(Slot const& slot, DrawnPage page) const {
    for (auto const& telling : page.tellings) work_.tell(telling);
    if (page.failure) std::rethrow_exception(page.failure);
    if (page.page) work_.keepPage(slot.task, std::move(*page.page), std::move(page.copy));
}

/// No other label has followed, or the machine gives no threads.
void DrawingThreads::DrawFirstHere() {
    auto const first = DropFirst();
    waiting_.pop_front();
    work_.drawHere(std::move(first->task));
    for (auto const& telling : first->behind) work_.tell(telling);
}

std::unique_ptr<DrawingThreads::Slot> DrawingThreads::DropFirst() {
    auto first = std::move(slots_.front());
    slots_.pop_front();
    bytes_ -= first->bytes;
    return first;
}

void DrawingThreads::Run(LabelDrawer& drawer) {
    for (;;) {
        std::unique_lock lock(mutex_);
        label_.wait(lock, [this] { return isOver_ || !waiting_.empty(); });
        if (isOver_) return;
        --free_;
        Slot& slot = *waiting_.front();
        waiting_.pop_front();
        lock.unlock();
        bool const goesOn = drawer.Draw(std::move(slot.task), work_.tag, work_.stage,
                                        [&](DrawnPage page) { return Put(slot, std::move(page)); });
        lock.lock();
        slot.hasEnded = true;
        slot.isInterrupted = !goesOn;
        ++free_;
        if (awaited_ == &slot) page_.notify_one();
    }
}

/// False if nobody takes it any more.
bool DrawingThreads::Put(Slot& slot, DrawnPage page) {
    std::size_t const bytes = page.Bytes();
    std::unique_lock lock(mutex_);
    room_.wait(lock, [&] {
        bool const fits = slot.pages.size() < MostPages && slot.pageBytes + bytes <= MostPageBytes;
        return isOver_ || slot.pages.empty() || fits;
    });
    if (isOver_) return false;
    slot.pages.push_back(std::move(page));
    slot.pageBytes += bytes;
    if (awaited_ == &slot) page_.notify_one();
    return true;
}
