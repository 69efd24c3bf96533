#pragma once

#include <QtCore/QSocketNotifier>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "desktop/serve/StreamWatch.h"

/// A client of the printer: what it has sent and nobody has taken yet, and what it has not read yet.
struct ClientConnection {
    using Clock = std::chrono::steady_clock;

    /// Owns the socket from now on.
    ClientConnection(int descriptor, StreamWatch streamWatch);
    ~ClientConnection();
    ClientConnection(ClientConnection const&) = delete;
    ClientConnection& operator=(ClientConnection const&) = delete;

    /// Takes what has arrived; notes that the client has ended or is gone.
    void Read();
    /// Sends bytes, now or when the client reads; one that lets more than 1 MiB wait is told nothing more. One answer
    /// may be of any size.
    void Answer(std::string const& bytes);
    void Flush();

    int socket;
    StreamWatch watch;
    std::unique_ptr<QSocketNotifier> readNotifier;
    std::unique_ptr<QSocketNotifier> writeNotifier;
    std::string buffer;
    std::uint64_t received = 0;  // bytes since the watch was made
    std::uint64_t jobBytes = 0;  // handed over of the open stream
    Clock::time_point lastRead = Clock::now();
    Clock::time_point lastTaken;  // when the host was done with a packet of it
    std::uint8_t session = 0;
    bool ended = false;   // the client sends no more
    bool broken = false;  // nor reads any more
    std::string answers;
    std::size_t sent = 0;  // bytes of them
};
