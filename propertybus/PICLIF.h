#pragma once

#include <atomic>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "propertybus/PICLServerAgent.h"

class PublishingPropertyManager;
class ThreadFactory;

/// The link of this process to the property server. Who writes sends, as far as the server takes it at once; one thread
/// sends the rest and hands what arrives to the property manager. A lost server is connected to again, with pauses that
/// grow from 10 milliseconds to 2 seconds, and everything is published and subscribed to anew.
class PICLIF {
public:
    /// `name`: by which this process introduces itself to the server.
    PICLIF(ThreadFactory& threads, std::shared_ptr<PublishingPropertyManager> properties, std::string name = {});
    ~PICLIF();
    PICLIF(PICLIF const&) = delete;
    PICLIF& operator=(PICLIF const&) = delete;

    /// Starts the link to the server's Unix domain socket; once. Tries once before it returns, so that a server that is
    /// there is connected then.
    void Connect(std::filesystem::path const& socketPath);
    void Disconnect();
    std::shared_ptr<PICLServerAgent> GetServerAgent() const;

private:
    class Agent;

    /// Keeps the message, and sends it over again on the next link, until the server has taken it.
    void EnqueueSurely(PiclMessage const& message);
    bool Enqueue(PiclMessage const& message);
    bool Append(PiclMessage const& message);
    void NoteTaken(PropertyAddress const& address);
    bool TryConnect();
    void Run();
    void Serve();
    bool FlushOutput();
    bool WriteOutput();
    bool ReadInput();
    void CloseSocket();
    void Drop(char const* reason);
    void Wake();

    ThreadFactory& threads_;
    std::shared_ptr<PublishingPropertyManager> properties_;
    std::string const name_;
    std::shared_ptr<Agent> agent_;
    std::filesystem::path socketPath_;
    std::thread::id thread_;
    PiclLines lines_;
    int wake_ = -1;
    std::atomic<bool> stopping_{false};

    std::mutex mutex_;
    int socket_ = -1;  // changed by the thread, under the lock
    bool connected_ = false;
    std::deque<std::string> output_;  // lines with their ends
    std::size_t outputBytes_ = 0;
    std::size_t written_ = 0;       // bytes of the first line
    std::deque<PiclMessage> kept_;  // writes that the server has not taken yet
};
