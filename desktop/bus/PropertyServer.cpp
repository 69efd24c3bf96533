#include "desktop/bus/PropertyServer.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "foundation/DebugZones.h"

namespace {

bool IsOwnUser(int descriptor) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &size) == 0 &&
           credentials.uid == ::geteuid();
}

}  // namespace

PropertyServer::PropertyServer(std::filesystem::path socketPath, std::filesystem::path archive)
    : socket_(std::move(socketPath)),
      store_(std::move(archive), [this](int peer, PiclMessage const& message) { Send(peer, message); }) {}

PropertyServer::~PropertyServer() {
    for (auto const& [descriptor, link] : links_) ::close(descriptor);
    if (store_.HasChanges()) store_.WriteChanges();
}

/// Some archived values change with every label, and a write costs the disk time: changes of a second are written
/// together. Gives the milliseconds until then, as poll takes them.
int PropertyServer::WriteArchiveInTime() {
    constexpr std::chrono::seconds Pause{1};
    auto const now = std::chrono::steady_clock::now();
    if (!store_.HasChanges()) {
        archiveDue_.reset();
        return -1;
    }
    if (!archiveDue_) archiveDue_ = now + Pause;
    if (*archiveDue_ > now)
        return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(*archiveDue_ - now).count());
    store_.WriteChangesBehind();
    archiveDue_.reset();
    return -1;
}

void PropertyServer::Run(int stop) {
    std::vector<pollfd> descriptors;
    for (;;) {
        // As poll takes it, -1 is the longest of all.
        auto const patience = static_cast<int>(
            std::min(static_cast<unsigned>(WriteArchiveInTime()), static_cast<unsigned>(socket_.RestoreInTime())));
        descriptors.assign(
            {{stop, POLLIN, 0}, {socket_.Descriptor(), POLLIN, 0}, {socket_.WatchDescriptor(), POLLIN, 0}});
        for (auto const& [descriptor, link] : links_)
            descriptors.push_back({descriptor, static_cast<short>(link.output.empty() ? POLLIN : POLLIN | POLLOUT), 0});
        if (::poll(descriptors.data(), descriptors.size(), patience) < 0) continue;
        if (descriptors[0].revents) return;
        for (std::size_t i = 3; i < descriptors.size(); ++i) {
            auto const& entry = descriptors[i];
            auto& link = links_.at(entry.fd);
            if (entry.revents & (POLLIN | POLLHUP | POLLERR)) Read(entry.fd, link);
        }
        if (descriptors[1].revents) Accept();
        if (descriptors[2].revents) socket_.NoteChange();
        for (auto& [descriptor, link] : links_) Flush(descriptor, link);
        RemoveDropped();
    }
}

void PropertyServer::Accept() {
    int const descriptor = ::accept4(socket_.Descriptor(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor < 0) return;
    if (!IsOwnUser(descriptor) || links_.size() >= MostPeers) {
        DebugLog(Warning, "a peer of another user, or one too many, is refused");
        ::close(descriptor);
        return;
    }
    links_.emplace(descriptor, Link());
}

void PropertyServer::Read(int descriptor, Link& link) {
    char buffer[64 * 1024];
    ssize_t const count = ::recv(descriptor, buffer, sizeof buffer, 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count <= 0) {
        link.dropped = true;
        return;
    }
    unsigned const skipped = link.lines.Append({buffer, static_cast<std::size_t>(count)}, [&](std::string_view line) {
        if (auto const message = PiclMessage::Parse(line)) return store_.Handle(descriptor, *message);
        Send(descriptor, {.type = PiclMessage::Type::Refused, .value = "a line is no message"});
    });
    if (skipped > 0) Send(descriptor, {.type = PiclMessage::Type::Refused, .value = "a line is too long"});
}

void PropertyServer::Send(int descriptor, PiclMessage const& message) {
    auto const found = links_.find(descriptor);
    if (found == links_.end() || found->second.dropped) return;
    auto& link = found->second;
    link.output.push_back(message.Text() + '\n');
    link.queued += link.output.back().size();
    // At once, so that nobody knows of something that another one who was told before may never hear.
    Flush(descriptor, link);
    if (link.queued <= MostQueued) return;
    DebugLog(Warning, "a peer that takes nothing is dropped");
    link.dropped = true;
}

void PropertyServer::Flush(int descriptor, Link& link) {
    while (!link.output.empty() && !link.dropped) {
        auto const& line = link.output.front();
        ssize_t const count = ::send(descriptor, line.data() + link.written, line.size() - link.written, MSG_NOSIGNAL);
        if (count < 0) {
            link.dropped = errno != EAGAIN && errno != EINTR;
            return;
        }
        link.written += static_cast<std::size_t>(count);
        if (link.written < line.size()) return;
        link.queued -= line.size();
        link.written = 0;
        link.output.pop_front();
    }
}

void PropertyServer::RemoveDropped() {
    std::vector<int> dropped;
    for (auto const& [descriptor, link] : links_) {
        if (link.dropped) dropped.push_back(descriptor);
    }
    for (int const descriptor : dropped) {
        links_.erase(descriptor);
        // The descriptor stays open, and so its number taken, until nobody is told about it any more.
        store_.Remove(descriptor);
        ::close(descriptor);
    }
}
