#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>
#include <chrono>
#include <list>
#include <memory>
#include <string>

#include "desktop/serve/BusComponent.h"
#include "desktop/serve/StreamWatch.h"
#include "jobhost/model/NetworkResponse.h"

/// Takes print streams from TCP connections and hands them to the host, one packet at a time and one stream after the
/// other, however many connections there are. A stream ends when its connection ends, or when it has been quiet for a
/// moment outside a format; so a label prints without the sender hanging up. A sender that is slow waits in its own
/// buffer and holds up nobody.
class JobHandler : public QObject {
public:
    /// Listens; throws std::system_error if the address cannot be had.
    JobHandler(ThreadFactory& threads, std::filesystem::path const& socket, std::string const& host, unsigned port);
    ~JobHandler() override;

    /// Jobs that were on their way are gone, and will not be reported as done.
    void ForgetJobs();
    unsigned Port() const { return port_; }

private:
    struct Connection;

    void Accept();
    void Read(Connection& connection);
    void Flush(Connection& connection);
    void TakeResponse(std::string const& text);
    void Pump();
    Connection* NextReady();
    bool IsComplete(Connection const& connection) const;
    void SendPiece(Connection& connection);
    void SendPacket(Connection& connection, std::size_t size, bool isLast);
    void RemoveFinished();
    StreamWatch NewWatch() const;

    BusComponent bus_;
    std::shared_ptr<StringProperty> command_;
    std::shared_ptr<StringProperty> response_;
    std::shared_ptr<StringProperty> formatPrefix_;
    std::shared_ptr<StringProperty> controlPrefix_;
    std::shared_ptr<StringProperty> delimiter_;
    int listener_ = -1;
    unsigned port_ = 0;
    std::unique_ptr<QSocketNotifier> acceptNotifier_;
    std::list<std::unique_ptr<Connection>> connections_;
    Connection* current_ = nullptr;   // whose stream is open
    Connection* answerTo_ = nullptr;  // whose stream was open last
    bool packetUnderWay_ = false;
    unsigned jobsUnderWay_ = 0;
    std::uint8_t lastSession_ = 0;
    QTimer quiet_;
};
