#include "desktop/serve/ClientConnection.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "foundation/DebugZones.h"

namespace {

constexpr std::size_t MostAnswers = 1 << 20;  // bytes that may wait for a client when the next answer comes

}  // namespace

ClientConnection::ClientConnection(int descriptor, StreamWatch streamWatch)
    : socket(descriptor),
      watch(std::move(streamWatch)),
      readNotifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read)),
      writeNotifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write)) {
    writeNotifier->setEnabled(false);
}

ClientConnection::~ClientConnection() {
    // One of them may be the reason for this call.
    for (auto* const notifier : {readNotifier.release(), writeNotifier.release()}) {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    ::close(socket);
}

void ClientConnection::Read() {
    char bytes[64 * 1024];
    ssize_t const count = ::recv(socket, bytes, sizeof bytes, 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count <= 0) {
        ended = true;
        broken = count < 0;
        readNotifier->setEnabled(false);
        return;
    }
    std::string_view const arrived(bytes, static_cast<std::size_t>(count));
    buffer += arrived;
    received += arrived.size();
    watch.Append(arrived);
    lastRead = Clock::now();
}

void ClientConnection::Answer(std::string const& bytes) {
    if (broken) return;
    if (answers.size() - sent > MostAnswers) {
        DebugLog(Warning, "a client does not read its answers; they are dropped");
        answers.clear();
        sent = 0;
        broken = true;
        return;
    }
    answers.erase(0, std::exchange(sent, 0));
    answers += bytes;
    Flush();
}

void ClientConnection::Flush() {
    while (sent < answers.size() && !broken) {
        ssize_t const count = ::send(socket, answers.data() + sent, answers.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) break;
        if (count < 0) broken = true;
        if (count > 0) sent += static_cast<std::size_t>(count);
    }
    if (sent == answers.size()) {
        answers.clear();
        sent = 0;
    }
    writeNotifier->setEnabled(!answers.empty() && !broken);
}
