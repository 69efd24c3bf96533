#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>
#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <string>

#include "desktop/serve/BusComponent.h"
#include "desktop/serve/ClientConnection.h"
#include "desktop/serve/Listener.h"
#include "desktop/serve/StreamCharacters.h"
#include "jobhost/model/NetworkResponse.h"

/// Takes print streams from TCP connections and hands them to the host, one packet at a time and one stream after the
/// other, however many connections there are. A stream ends when its connection ends, or when it has been quiet for a
/// moment outside a format; so a label prints without the sender hanging up. A sender that is slow waits in its own
/// buffer and holds up nobody.
class JobHandler : public QObject {
public:
    using Say = std::function<void(std::string const&)>;

    /// Listens; throws std::runtime_error if the address cannot be had. `say` is told what its user should know.
    JobHandler(
        ThreadFactory& threads, std::filesystem::path const& socket, std::string const& host, unsigned port,
        Say say = [](std::string const&) {});
    ~JobHandler() override;

    /// Jobs that were on their way are gone, and will not be reported as done.
    void ForgetJobs();
    /// So too when the host has ended. A packet on which it ends twice is dropped with the rest of its stream.
    void HostEnded();
    /// Drops the streams that are complete and wait to be handed over.
    void DropWaiting();
    unsigned Port() const { return listener_.Port(); }
    bool IsLocal() const { return listener_.IsLocal(); }

private:
    using Connection = ClientConnection;

    void Accept();
    void NotePacketTaken();
    void TakeResponse(std::string const& text);
    void NoteDone();
    bool MayBeAnswered(Connection const& connection) const;
    void Pump();
    Connection* NextReady();
    bool IsComplete(Connection const& connection) const;
    void SendPiece(Connection& connection);
    void SendPacket(Connection& connection, std::size_t size, bool isLast);
    void RemoveFinished();
    void TellNoise(Connection const& connection) const;

    Say say_;
    Listener listener_;
    BusComponent bus_;
    StreamCharacters characters_;
    std::shared_ptr<StringProperty> command_;
    std::shared_ptr<StringProperty> response_;
    std::unique_ptr<QSocketNotifier> acceptNotifier_;
    std::list<std::unique_ptr<Connection>> connections_;
    Connection* current_ = nullptr;  // whose stream is open
    bool packetUnderWay_ = false;
    bool packetEndsStream_ = false;
    unsigned endsOfHost_ = 0;          // with this packet under way
    Connection* packetOf_ = nullptr;   // whose packet is under way
    bool interpreting_ = false;        // the host is at that packet: what it answers now is for its sender
    std::deque<Connection*> jobs_;     // senders of the streams handed over and not yet done; null once they are gone
    Connection* lastJobOf_ = nullptr;  // sender of the stream that was handed over last
    std::uint8_t lastSession_ = 0;
    QTimer quiet_;
};
