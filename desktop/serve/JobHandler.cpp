#include "desktop/serve/JobHandler.h"

#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <algorithm>

#include "foundation/Base64.h"
#include "foundation/DebugZones.h"
#include "jobhost/model/Packet.h"

using namespace std::chrono_literals;
using Clock = ClientConnection::Clock;

namespace {

constexpr auto QuietTime = 100ms;
constexpr auto DownloadQuietTime = 2s;         // for commands that bring data along
constexpr auto AnswerTime = 200ms;             // for pages that answer a sender that has ended its stream
constexpr auto StallTime = 30s;                // for a stream that is open and breaks off
constexpr std::size_t PieceSize = 64 * 1024;   // bytes of one packet
constexpr std::size_t OpenSize = 256 * 1024;   // a stream of more is opened before it is complete
constexpr std::size_t MostBuffered = 1 << 20;  // bytes of one connection; then it is not read any more
constexpr std::size_t JobSize = 1 << 20;       // a stream of more becomes several jobs
constexpr std::size_t MostConnections = 500;
constexpr unsigned MostJobs = 16;  // handed over and not yet done

}  // namespace

JobHandler::JobHandler(ThreadFactory& threads, std::filesystem::path const& socket, std::string const& host,
                       unsigned port, Say say)
    : say_(std::move(say)),
      listener_(host, port),
      bus_(threads, ComponentIdentifiers::JobHandler, socket),
      characters_(bus_.Properties(), *this, say_) {
    namespace Group = PropertyGroups;
    command_ = bus_.Own<StringProperty>(PropertyNames::ZPLCommandToProcess, Group::PrintOperations, "");
    response_ = bus_.Own<StringProperty>(PropertyNames::ZPLResponseToProcess, Group::PrintOperations, "");
    response_->SetEveryWriteCounts(true);

    acceptNotifier_ = std::make_unique<QSocketNotifier>(listener_.Descriptor(), QSocketNotifier::Read);
    connect(acceptNotifier_.get(), &QSocketNotifier::activated, this, [this] { Accept(); });

    // Properties are delivered on a thread of the bus; everything else happens on this one.
    command_->AddCallback([this](std::shared_ptr<Property> const& changed) {
        // The value may have moved on when this thread's own write is told.
        if (QThread::currentThread() == thread() || !changed->ValueText().empty()) return;
        QMetaObject::invokeMethod(
            this, [this] { NotePacketTaken(); }, Qt::QueuedConnection);
    });
    response_->AddCallback([this](std::shared_ptr<Property> const& changed) {
        QMetaObject::invokeMethod(
            this, [this, text = changed->ValueText()] { TakeResponse(text); }, Qt::QueuedConnection);
    });
    quiet_.setSingleShot(true);
    connect(&quiet_, &QTimer::timeout, this, [this] { Pump(); });
}

JobHandler::~JobHandler() {
    connections_.clear();
    // What connections have left to the event loop to delete; that may not run any more.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void JobHandler::TellNoise(Connection const& connection) const {
    if (!connection.watch.IsNoise()) return;
    say_("a stream of " + std::to_string(connection.jobBytes) + " bytes holds no command: the prefixes are " +
         characters_.Prefixes());
}

void JobHandler::Accept() {
    int const descriptor = listener_.Accept();
    if (descriptor < 0) return;
    if (connections_.size() >= MostConnections) {
        DebugLog(Warning, "one connection too many is refused");
        ::close(descriptor);
        return;
    }
    auto& connection = *connections_.emplace_back(std::make_unique<Connection>(descriptor, characters_.NewWatch()));
    connection.session = ++lastSession_;
    connect(connection.readNotifier.get(), &QSocketNotifier::activated, this, [this, &connection] {
        connection.Read();
        if (connection.buffer.size() >= MostBuffered) connection.readNotifier->setEnabled(false);
        Pump();
    });
    connect(connection.writeNotifier.get(), &QSocketNotifier::activated, this, [this, &connection] {
        connection.Flush();
        Pump();
    });
}

void JobHandler::TakeResponse(std::string const& text) {
    auto const response = zpl::NetworkResponse::Parse(text);
    if (!response) return;
    switch (response->status) {
        case zpl::NetworkResponse::Status::Processing: interpreting_ = packetUnderWay_; break;
        case zpl::NetworkResponse::Status::Done: NoteDone(); break;
        case zpl::NetworkResponse::Status::Answer: {
            // Outside the interpretation of a packet it is pages that answer, and those of the newest job are drawn
            // right behind its last packet.
            Connection* const receiver = interpreting_ ? packetOf_ : lastJobOf_;
            auto const bytes = Base64::Decode(response->data.value_or(""));
            if (receiver && bytes) receiver->Answer(*bytes);
            break;
        }
    }
}

/// Jobs are done in the order in which they were handed over, but for a stream without labels, which is done before its
/// last packet is.
void JobHandler::NoteDone() {
    if (!jobs_.empty()) interpreting_ ? jobs_.pop_back() : jobs_.pop_front();
    Pump();
}

void JobHandler::NotePacketTaken() {
    if (!packetUnderWay_) return;
    packetUnderWay_ = interpreting_ = false;
    endsOfHost_ = 0;
    if (packetEndsStream_) lastJobOf_ = packetOf_;
    if (packetOf_) packetOf_->lastTaken = Clock::now();
    packetOf_ = nullptr;
    Pump();
}

void JobHandler::ForgetJobs() {
    jobs_.clear();
    Pump();
}

void JobHandler::DropWaiting() {
    for (auto const& connection : connections_) {
        if (connection.get() == current_ || !IsComplete(*connection)) continue;
        connection->buffer.clear();
        connection->watch.ForgetBytes();
        if (!connection->ended) connection->readNotifier->setEnabled(true);
    }
    Pump();
}

void JobHandler::HostEnded() {
    constexpr unsigned Most = 2;
    interpreting_ = false;
    if (packetUnderWay_ && ++endsOfHost_ >= Most) {
        DebugLog(Error, "the host ends on what it is sent; the stream is dropped");
        if (current_) {
            current_->buffer.clear();
            current_->jobBytes = 0;
            current_ = nullptr;
        }
        command_->Set("");
        NotePacketTaken();
    }
    ForgetJobs();
}

bool JobHandler::IsComplete(Connection const& connection) const {
    if (connection.ended) return true;
    if (connection.watch.InFormat() || connection.watch.InLetters()) return false;
    auto const wanted = connection.watch.InDownload() ? Clock::duration(DownloadQuietTime) : Clock::duration(QuietTime);
    return Clock::now() - connection.lastRead >= wanted;
}

JobHandler::Connection* JobHandler::NextReady() {
    if (jobs_.size() >= MostJobs) return nullptr;
    for (auto next = connections_.begin(); next != connections_.end(); ++next) {
        Connection& connection = **next;
        if (connection.buffer.empty()) continue;
        if (!IsComplete(connection) && connection.buffer.size() < OpenSize) continue;
        // Whoever has had a turn stands behind the others.
        connections_.splice(connections_.end(), connections_, next);
        return &connection;
    }
    return nullptr;
}

void JobHandler::Pump() {
    RemoveFinished();
    if (!packetUnderWay_) {
        if (!current_) current_ = NextReady();
        if (current_) SendPiece(*current_);
    }
    // Quiet streams are looked at again; with nothing waiting the process sleeps.
    bool const waits = std::any_of(connections_.begin(), connections_.end(), [this](auto const& entry) {
        return entry->ended ? MayBeAnswered(*entry) : !entry->buffer.empty();
    });
    if ((waits || current_) && !quiet_.isActive()) quiet_.start(QuietTime / 2);
}

void JobHandler::SendPiece(Connection& connection) {
    auto const& buffer = connection.buffer;
    bool const complete = IsComplete(connection);
    std::uint64_t const handedOver = connection.received - buffer.size();
    std::uint64_t const formatEnd = connection.watch.LastFormatEnd();
    if (connection.jobBytes >= JobSize && formatEnd > handedOver && formatEnd - handedOver <= PieceSize)
        return SendPacket(connection, static_cast<std::size_t>(formatEnd - handedOver), true);
    if (buffer.size() > PieceSize) return SendPacket(connection, PieceSize, false);
    if (complete) return SendPacket(connection, buffer.size(), true);
    if (Clock::now() - connection.lastRead < StallTime) return;
    DebugLog(Warning, "a stream breaks off inside a format; it is ended");
    SendPacket(connection, buffer.size(), true);
}

void JobHandler::SendPacket(Connection& connection, std::size_t size, bool isLast) {
    Zpl::Host::Packet packet;
    packet.SessionId = connection.session;
    packet.Command = isLast ? Zpl::Host::Packet::EndOfStream : 0;
    packet.payload = connection.buffer.substr(0, size);
    connection.buffer.erase(0, size);
    connection.jobBytes += size;
    // The end of a stream completes its last command only together with some bytes.
    if (isLast && packet.payload.empty()) packet.payload.push_back('\n');
    packetOf_ = &connection;
    packetUnderWay_ = true;
    packetEndsStream_ = isLast;
    if (isLast) {
        TellNoise(connection);
        // What is left begins the next stream, and has been watched already.
        if (connection.buffer.empty()) connection.watch.ForgetBytes();
        jobs_.push_back(&connection);
        connection.jobBytes = 0;
        current_ = nullptr;
    }
    if (!connection.ended) connection.readNotifier->setEnabled(connection.buffer.size() < MostBuffered);
    command_->Set(packet.Text());
}

void JobHandler::RemoveFinished() {
    std::erase_if(connections_, [this](auto const& entry) {
        Connection& connection = *entry;
        bool const done = connection.ended && connection.buffer.empty() && current_ != &connection &&
                          (connection.broken || (connection.answers.empty() && !MayBeAnswered(connection)));
        if (!done) return false;
        if (packetOf_ == &connection) packetOf_ = nullptr;
        if (lastJobOf_ == &connection) lastJobOf_ = nullptr;
        std::replace(jobs_.begin(), jobs_.end(), &connection, static_cast<Connection*>(nullptr));
        return true;
    });
}

/// While its last packet is interpreted, and for the moment in which the first pages of its job are drawn.
bool JobHandler::MayBeAnswered(Connection const& connection) const {
    if (packetOf_ == &connection) return true;
    bool const isAtWork = std::find(jobs_.begin(), jobs_.end(), &connection) != jobs_.end();
    return isAtWork && lastJobOf_ == &connection && Clock::now() - connection.lastTaken < AnswerTime;
}
