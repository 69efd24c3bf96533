#pragma once

#include <chrono>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "desktop/bus/PropertyStore.h"
#include "desktop/bus/ServerSocket.h"

/// The property server: a Unix domain socket that only its user may open, and one thread that serves all its peers. A
/// peer that sends nonsense is told so and ignored; one that does not take what it is sent is dropped.
class PropertyServer {
public:
    static constexpr std::size_t MostPeers = 64;
    static constexpr std::size_t MostQueued = 2 * PiclLines::LongestLine;  ///< bytes that wait for one peer

    /// Throws std::system_error if the socket cannot be had; see ServerSocket.
    PropertyServer(std::filesystem::path socketPath, std::filesystem::path archive);
    ~PropertyServer();
    PropertyServer(PropertyServer const&) = delete;
    PropertyServer& operator=(PropertyServer const&) = delete;

    /// Serves until the descriptor `stop` becomes readable.
    void Run(int stop);

private:
    struct Link {
        PiclLines lines;
        std::deque<std::string> output;
        std::size_t queued = 0;
        std::size_t written = 0;  // bytes of the first line
        bool dropped = false;
    };

    int WriteArchiveInTime();
    void Accept();
    void Read(int descriptor, Link& link);
    void Flush(int descriptor, Link& link);
    void Send(int descriptor, PiclMessage const& message);
    void RemoveDropped();

    ServerSocket socket_;
    std::map<int, Link> links_;  // by descriptor
    PropertyStore store_;
    std::optional<std::chrono::steady_clock::time_point> archiveDue_;
};
