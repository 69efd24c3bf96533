#include "propertybus/PICLIF.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <utility>

#include "foundation/DebugZones.h"
#include "propertybus/PublishingPropertyManager.h"
#include "propertybus/SocketAddress.h"
#include "propertybus/ThreadFactory.h"

namespace {

constexpr std::chrono::milliseconds ShortestPause{10};
constexpr std::chrono::milliseconds LongestPause{2000};
/// A server that takes nothing for so long that this much waits is treated as lost.
constexpr std::size_t MostOutput = 2 * PiclLines::LongestLine;
constexpr std::size_t MostKept = 1000;

/// Whether a loss has to be told: one server serves all links of a process, and while it dies it may take a link once
/// more, so what is lost in one second is lost once.
bool IsNews() {
    using Clock = std::chrono::steady_clock;
    static std::atomic<Clock::duration> lastLoss{Clock::duration::min() / 2};
    Clock::duration const now = Clock::now().time_since_epoch();
    return now - lastLoss.exchange(now) > std::chrono::seconds(1);
}

/// A socket that is connected to the server; -1 if there is none.
int OpenSocket(std::filesystem::path const& path) {
    int const descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    try {
        SocketAddress const address(path);
        if (descriptor >= 0 && ::connect(descriptor, address.Get(), SocketAddress::Size) == 0) return descriptor;
    } catch (std::system_error const& error) {
        DebugLog(PICL, error.what());
    }
    ::close(descriptor);
    return -1;
}

}  // namespace

/// Writes to properties that this process has pass through them, so that the value here and the value on the bus stay
/// one; all other writes go straight to the server.
class PICLIF::Agent : public PICLServerAgent {
public:
    explicit Agent(PICLIF& link) : link_(&link) {}

    void SetProperty(std::string const& component, std::string const& group, std::string const& property,
                     std::string const& value) override {
        PropertyAddress const address{component, group, property};
        std::shared_ptr<Property> own;
        {
            std::lock_guard const lock(mutex_);
            if (!link_) return;
            own = link_->properties_->FindOnBus(address);
            if (!own) {
                link_->EnqueueSurely({.type = PiclMessage::Type::Set, .address = address, .value = value});
                return;
            }
        }
        own->SetValueText(value);
    }

    bool WaitUntilAvailable(PropertyAddress const& address, std::chrono::milliseconds timeout) override {
        return properties_->WaitUntilAvailable(address, timeout);
    }
    void CancelWaiting() override { properties_->CancelWaiting(); }

    void Detach() {
        std::lock_guard const lock(mutex_);
        link_ = nullptr;
    }

private:
    std::mutex mutex_;
    PICLIF* link_;
    std::shared_ptr<PublishingPropertyManager> properties_ = link_->properties_;
};

PICLIF::PICLIF(ThreadFactory& threads, std::shared_ptr<PublishingPropertyManager> properties, std::string name)
    : threads_(threads),
      properties_(std::move(properties)),
      name_(std::move(name)),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    agent_ = std::make_shared<Agent>(*this);
    properties_->SetSender([this](PiclMessage const& message) { return Enqueue(message); });
}

PICLIF::~PICLIF() {
    properties_->SetSender({});
    agent_->Detach();
    Disconnect();
    ::close(wake_);
}

std::shared_ptr<PICLServerAgent> PICLIF::GetServerAgent() const { return agent_; }

void PICLIF::Connect(std::filesystem::path const& socketPath) {
    socketPath_ = socketPath;
    TryConnect();
    thread_ = threads_.StartThread("picl", [this] { Run(); });
}

void PICLIF::Disconnect() {
    if (stopping_.exchange(true)) return;
    Wake();
    threads_.Join(thread_);
    CloseSocket();
}

void PICLIF::Wake() {
    std::uint64_t const one = 1;
    [[maybe_unused]] auto const written = ::write(wake_, &one, sizeof one);
}

void PICLIF::EnqueueSurely(PiclMessage const& message) {
    std::lock_guard const lock(mutex_);
    // What is too long is never taken.
    if (message.Text().size() <= PiclLines::LongestLine) {
        if (kept_.size() == MostKept) kept_.pop_front();
        kept_.push_back(message);
    }
    Append(message);
}

void PICLIF::NoteTaken(PropertyAddress const& address) {
    std::lock_guard const lock(mutex_);
    auto const first =
        std::find_if(kept_.begin(), kept_.end(), [&](auto const& message) { return message.address == address; });
    if (first != kept_.end()) kept_.erase(first);
}

bool PICLIF::Enqueue(PiclMessage const& message) {
    std::lock_guard const lock(mutex_);
    return Append(message);
}

/// To be called under the lock.
bool PICLIF::Append(PiclMessage const& message) {
    if (!connected_) return false;
    std::string line = message.Text();
    if (line.size() > PiclLines::LongestLine) {
        DebugLog(Error, "a value of " + std::to_string(message.value.size()) + " bytes is too long for the bus");
        // It will never be taken, and must not keep other values out.
        properties_->Post({.type = PiclMessage::Type::Taken, .address = message.address});
        return false;
    }
    line += '\n';
    outputBytes_ += line.size();
    output_.push_back(std::move(line));
    // At once where nothing waits: to wake the thread for it takes longer than the write. What goes wrong it finds too.
    if (output_.size() > 1 || !WriteOutput() || !output_.empty()) Wake();
    return true;
}

bool PICLIF::TryConnect() {
    int const descriptor = OpenSocket(socketPath_);
    if (descriptor < 0) return false;
    lines_ = PiclLines();
    // What is written from now on goes behind what has to be repeated.
    properties_->HoldWrites();
    {
        std::lock_guard const lock(mutex_);
        socket_ = descriptor;
        connected_ = true;
        output_.clear();
        outputBytes_ = written_ = 0;
        Append({.type = PiclMessage::Type::Hello, .value = name_});
        for (auto const& message : kept_) Append(message);
    }
    DebugLog(PICL, "connected to " + socketPath_.string());
    properties_->PostLinkUp();
    return true;
}

void PICLIF::CloseSocket() {
    properties_->NoteLinkLost();
    std::lock_guard const lock(mutex_);
    connected_ = false;
    output_.clear();
    outputBytes_ = 0;
    if (socket_ >= 0) ::close(std::exchange(socket_, -1));
}

void PICLIF::Drop(char const* reason) {
    CloseSocket();
    if (IsNews()) DebugLog(Warning, std::string("the property server is lost: ") + reason);
}

void PICLIF::Run() {
    auto pause = ShortestPause;
    while (!stopping_) {
        if (socket_ < 0 && !TryConnect()) {
            pollfd wake{wake_, POLLIN, 0};
            auto const deadline = std::chrono::steady_clock::now() + pause;
            // Writes wake the thread too; they are no reason to try earlier.
            while (!stopping_) {
                auto const left =
                    std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
                if (left.count() <= 0) break;
                if (::poll(&wake, 1, static_cast<int>(left.count())) > 0) {
                    std::uint64_t count = 0;
                    [[maybe_unused]] auto const got = ::read(wake_, &count, sizeof count);
                }
            }
            pause = std::min(pause * 2, LongestPause);
            continue;
        }
        pause = ShortestPause;
        Serve();
    }
}

void PICLIF::Serve() {
    bool hasOutput = false;
    {
        std::lock_guard const lock(mutex_);
        hasOutput = !output_.empty();
        if (outputBytes_ > MostOutput) hasOutput = false;
    }
    pollfd descriptors[] = {{socket_, static_cast<short>(POLLIN | (hasOutput ? POLLOUT : 0)), 0}, {wake_, POLLIN, 0}};
    if (::poll(descriptors, 2, -1) < 0) return;
    if (descriptors[1].revents) {
        std::uint64_t count = 0;
        [[maybe_unused]] auto const got = ::read(wake_, &count, sizeof count);
    }
    if ((descriptors[0].revents & (POLLIN | POLLHUP | POLLERR)) && !ReadInput()) return;
    FlushOutput();
}

bool PICLIF::FlushOutput() {
    std::unique_lock lock(mutex_);
    if (outputBytes_ > MostOutput) {
        lock.unlock();
        Drop("it takes nothing");
        return false;
    }
    if (WriteOutput()) return true;
    lock.unlock();
    // A server that is gone may have said something before, up to the end that is found behind it.
    while (ReadInput()) {
    }
    return false;
}

/// To be called under the lock. False if the link is broken; true also if the server takes no more for now.
bool PICLIF::WriteOutput() {
    while (!output_.empty()) {
        auto const& line = output_.front();
        ssize_t const count = ::send(socket_, line.data() + written_, line.size() - written_, MSG_NOSIGNAL);
        if (count < 0) return errno == EAGAIN || errno == EINTR;
        written_ += static_cast<std::size_t>(count);
        if (written_ < line.size()) return true;
        outputBytes_ -= line.size();
        written_ = 0;
        output_.pop_front();
    }
    return true;
}

bool PICLIF::ReadInput() {
    char buffer[64 * 1024];
    ssize_t const count = ::recv(socket_, buffer, sizeof buffer, 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return true;
    if (count <= 0) {
        Drop(count == 0 ? "it has closed the link" : std::strerror(errno));
        return false;
    }
    lines_.Append({buffer, static_cast<std::size_t>(count)}, [this](std::string_view line) {
        if (auto message = PiclMessage::Parse(line)) {
            if (message->type == PiclMessage::Type::Taken) NoteTaken(message->address);
            properties_->Take(*message);
        } else {
            DebugLog(PropertyWarning, "a line of the property server is no message");
        }
    });
    return true;
}

bool PICLGetSetHelper::WaitUntilPropertyAvailable(PICLServerAgent& agent, std::string const& component,
                                                  std::string const& group, std::string const& property) {
    return agent.WaitUntilAvailable({component, group, property}, std::chrono::milliseconds::max());
}
