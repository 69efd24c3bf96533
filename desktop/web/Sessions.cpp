#include "desktop/web/Sessions.h"

#include <algorithm>

#include "desktop/web/Refusal.h"

namespace {

constexpr std::size_t MostSessions = 32;
constexpr std::size_t LongestName = 64;
constexpr std::size_t MostWaiting = 8;
constexpr std::uintmax_t MostBytes = 16 << 20;
constexpr std::chrono::minutes Idle{15};

bool IsName(std::string const& name) {
    constexpr char const* Letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    return !name.empty() && name.size() <= LongestName && name.find_first_not_of(Letters) == std::string::npos;
}

std::uintmax_t BytesBelow(std::filesystem::path const& folder) {
    std::uintmax_t bytes = 0;
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        auto const size = entry->is_regular_file(ignored) ? entry->file_size(ignored) : 0;
        if (!ignored) bytes += size;
    }
    return bytes;
}

}  // namespace

std::shared_ptr<Sessions::Session> Sessions::Find(std::string const& name) {
    if (auto const found = sessions_.find(name); found != sessions_.end()) return found->second;
    if (sessions_.size() >= MostSessions)
        throw Refusal(429, "there are 32 sessions; one ends when nobody has used it for 15 minutes");
    return sessions_[name] = std::make_shared<Session>();
}

void Sessions::Run(std::string const& name, Work work) {
    if (!IsName(name)) throw Refusal(400, "session is 1 to 64 letters, digits, - and _");
    EndIdle();
    std::lock_guard const lock(mutex_);
    auto const session = Find(name);
    session->used = std::chrono::steady_clock::now();
    if (std::exchange(session->wasTooLarge, false))
        throw Refusal(413, "what the session stored took more than 16 MiB and has been dropped; it begins anew");
    if (session->isBusy) {
        if (session->waiting.size() >= MostWaiting) throw Refusal(429, "too many requests wait for this session");
        session->waiting.push_back(std::move(work));
        return;
    }
    session->waiting.push_back(std::move(work));
    session->isBusy = start_([this, session] { RunAll(session); });
    if (session->isBusy) return;
    session->waiting.clear();
    throw Refusal(429, "too much is being drawn at once; try again");
}

void Sessions::RunAll(std::shared_ptr<Session> const& session) {
    std::unique_lock lock(mutex_);
    while (!session->waiting.empty()) {
        auto const work = std::move(session->waiting.front());
        session->waiting.pop_front();
        lock.unlock();
        work(session->folder.Make());
        bool const isTooLarge = BytesBelow(session->folder.Path()) > MostBytes;
        std::error_code ignored;
        if (isTooLarge) std::filesystem::remove_all(session->folder.Path(), ignored);
        lock.lock();
        session->wasTooLarge = session->wasTooLarge || isTooLarge;
    }
    session->isBusy = false;
    session->used = std::chrono::steady_clock::now();
}

void Sessions::EndIdle() {
    std::lock_guard const lock(mutex_);
    auto const end = std::chrono::steady_clock::now() - Idle;
    std::erase_if(sessions_, [end](auto const& each) { return !each.second->isBusy && each.second->used < end; });
}
