#include "desktop/serve/Connections.h"

#include <sys/resource.h>

#include <algorithm>
#include <tuple>

#include "foundation/DebugZones.h"

namespace {

constexpr std::chrono::seconds Patience(5);  // with a connection that says nothing that could be printed
constexpr std::size_t OtherFiles = 64;       // that the process needs besides

std::size_t RoomForConnections() {
    rlimit files{};
    if (::getrlimit(RLIMIT_NOFILE, &files) != 0) return Connections::Most;
    rlim_t const wanted = Connections::Most + OtherFiles;
    if (files.rlim_cur < wanted && files.rlim_max > files.rlim_cur) {
        files.rlim_cur = std::min(wanted, files.rlim_max);
        ::setrlimit(RLIMIT_NOFILE, &files);
        ::getrlimit(RLIMIT_NOFILE, &files);
    }
    std::size_t const room = files.rlim_cur > 2 * OtherFiles ? files.rlim_cur - OtherFiles : OtherFiles;
    return std::min(Connections::Most, room);
}

}  // namespace

Connections::Connections() : most_(RoomForConnections()) {}

ClientConnection& Connections::Add(int descriptor, StreamState const& start) {
    return *list_.emplace_back(std::make_shared<ClientConnection>(descriptor, start));
}

bool Connections::IsFull() const {
    auto const isOpen = [](Pointer const& each) { return each->socket >= 0; };
    return list_.size() >= most_ &&
           static_cast<std::size_t>(std::count_if(list_.begin(), list_.end(), isOpen)) >= most_;
}

bool Connections::MakePlace(Pointer const& kept) {
    auto const before = ClientConnection::Clock::now() - Patience;
    // What will print, or waits for an answer of the host, stays in any case; so does who has come a moment ago.
    auto const mayGo = [&](Pointer const& each) {
        bool const isHeard = each->Ready() == 0 && !each->AwaitsHost() && !each->ended;
        return each != kept && isHeard && each->waitsSince < before;
    };
    auto const rank = [](Pointer const& each) {
        bool const hasBytes = !each->Waiting().empty() || each->UnsentBytes() > 0;
        return std::tuple(hasBytes, each->waitsSince);
    };
    auto found = list_.end();
    for (auto each = list_.begin(); each != list_.end(); ++each) {
        if (mayGo(*each) && (found == list_.end() || rank(*each) < rank(*found))) found = each;
    }
    if (found == list_.end()) return false;
    DebugLog(Warning, "there are too many connections; the one that has printed nothing for longest is closed");
    (*found)->Abort("had to make place for others");
    list_.erase(found);
    return true;
}

void Connections::PutBehind(Pointer const& connection) {
    auto const found = std::find(list_.begin(), list_.end(), connection);
    if (found != list_.end()) list_.splice(list_.end(), list_, found);
}

void Connections::PutFirstBehind() {
    auto const count = static_cast<std::ptrdiff_t>((list_.size() + 3) / 4);
    list_.splice(list_.end(), list_, list_.begin(), std::next(list_.begin(), count));
}

void Connections::PutOff(ClientConnection& connection) {
    if (connection.putOffSince == 0) connection.putOffSince = ++putOffs_;
}

bool Connections::HasPutOffs() const {
    return std::any_of(list_.begin(), list_.end(), [](Pointer const& each) { return each->putOffSince > 0; });
}

Connections::Pointer Connections::NextPutOff() {
    Pointer const* found = nullptr;
    for (auto const& each : list_) {
        if (each->putOffSince > 0 && (!found || each->putOffSince < (*found)->putOffSince)) found = &each;
    }
    if (!found) return nullptr;
    (*found)->putOffSince = 0;
    return *found;
}

void Connections::SetShares() {
    std::size_t used = 0;
    for (auto const& each : list_) used += each->Waiting().size();
    share_ = used < Memory ? LargestShare : std::clamp(Memory / list_.size(), SmallestShare, LargestShare);
}

void Connections::Answer(ClientConnection& connection, std::string const& bytes) const {
    constexpr std::size_t Small = 64UL << 10;
    if (bytes.size() <= Small && connection.UnsentBytes() == 0) return connection.Answer(bytes);
    std::size_t unsent = 0;
    for (auto const& each : list_) unsent += each->UnsentBytes();
    if (unsent < MostUnsent) return connection.Answer(bytes);
    DebugLog(Warning, "clients do not read their answers; one more is dropped");
}
