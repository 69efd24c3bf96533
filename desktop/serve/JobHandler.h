#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "desktop/serve/BusComponent.h"
#include "desktop/serve/Connections.h"
#include "desktop/serve/FindingsReceiver.h"
#include "desktop/serve/HostAnswers.h"
#include "desktop/serve/Listener.h"
#include "desktop/serve/StreamCharacters.h"
#include "desktop/serve/StreamsAtHost.h"
#include "desktop/serve/SurfaceStreams.h"
#include "jobhost/model/NetworkResponse.h"

struct JobHandlerOptions {
    bool answers = true;  ///< whether clients are answered at all
    std::function<PrinterFacts()> facts = [] { return PrinterFacts(); };
    std::size_t longestFormat = 64UL << 20;      ///< bytes of a format, or of a command outside of formats
    std::size_t leastRate = 16UL << 10;          ///< bytes a second of a stream that is taken in unfinished,
    std::chrono::milliseconds ratePeriod{5000};  ///< over this time,
    std::chrono::milliseconds longestHold{500};  ///< and how long others may wait for its end
    /// Is told when all is cancelled: jobs of streams that end with the packet of that number, or before it, are not
    /// to be printed, though the host may make them yet.
    std::function<void(std::uint32_t)> onCancelled = [](std::uint32_t) {};
    /// Is told of each packet that the host is given for the first time.
    std::function<void(Zpl::Host::Packet const&)> onPacket = [](Zpl::Host::Packet const&) {};
};

/// Takes print streams from TCP connections and hands them to the host, one packet at a time and one stream after the
/// other, however many connections there are. What is handed over are whole formats, so that nobody waits for a slow
/// sender; a stream ends there when others wait or no more comes. Only a format that is larger than a client's share of
/// the memory is taken in before it is complete, when nobody else prints; it has to keep moving then. Questions that
/// need nothing of a stream are answered here.
class JobHandler : public QObject {
public:
    using Say = TellEvent;

    using Options = JobHandlerOptions;

    /// Listens; throws std::runtime_error if the address cannot be had. `say` is told what its user should know.
    JobHandler(
        ThreadFactory& threads, std::filesystem::path const& socket, std::string const& host, unsigned port,
        Say say = [](PrinterEvent const&) {}, Options options = Options());
    ~JobHandler() override;

    /// Jobs that were on their way are cancelled, and will not be reported as done.
    void ForgetJobs();
    /// The printer is done with the job whose stream ended with the packet of that number.
    void NoteJobOver(std::uint32_t packetNumber) { atHost_.NoteOver(packetNumber); }
    /// Whether all that a host which has ended has said has been told on the bus, and what was told is heard here when
    /// the event loop comes round again.
    bool IsHostGone();
    /// When that is so: the next host is given what the last one had; see StreamsAtHost. `pagesCame`: since the last
    /// time.
    void HostEnded(bool pagesCame);
    /// Whether the bus holds what the next host is to begin with.
    bool IsReadyForHost() const { return command_->IsTaken(); }
    /// Drops the labels that wait for their turn, what would be given to the next host, and what has come of the stream
    /// that is open; gives the number of streams that waited.
    unsigned DropWaiting();
    unsigned Port() const { return listener_.Port(); }
    bool IsLocal() const { return listener_.IsLocal(); }

private:
    using Connection = ClientConnection;
    using Pointer = Connections::Pointer;
    using Clock = ClientConnection::Clock;
    using Question = StreamWatch::Question;

    /// What a connection wants of the host: to be answered, labels printed, or room for a format that is too large to
    /// be kept until it is complete.
    enum class Want { Nothing, Answers, Labels, Room };

    void AcceptAll();
    bool Accept();
    void TakeIn(std::string stream, SurfaceStreams::WhenOver whenOver);
    void NotePacketTaken();
    void TakeResponse(std::string const& text);
    void NoteDone();
    bool MayBeAnswered(Pointer const& connection) const;
    static void DropReady(Connection& connection);
    void RemoveFinished();

    void PumpSoon();
    void Pump();
    void LookAtAll();
    void ReadOn(Connection& connection);
    bool ServePutOffs();
    void DealWith(Connection& connection, Question const& question);
    void AnswerBehind(Connection& connection);
    void SendAnswer(Connection& connection, std::string const& bytes);
    PrinterFacts const& Facts();

    Want WantOf(Connection const& connection) const;
    bool OthersWait();
    Pointer NextInTurn();
    void GiveTurns();
    void WaitForMore();
    bool IsCrowded() const;
    void Begin(Pointer const& connection);
    void GoOn(Pointer const& connection);
    void GoOnInside(Pointer const& connection);
    void CancelOpen(Pointer const& connection);
    void EndOpen(Pointer const& connection);
    void AskBeside(Pointer const& connection);
    bool EndsWith(Connection const& connection, std::size_t piece);
    void DropNoise();
    void DropNoise(Connection& connection);
    bool IsUpToDate(Connection& connection);
    void TellNoise(Connection& connection);
    void Refuse(Pointer const& connection, std::string const& why);
    void TellBreakOff(Connection& connection) const;
    void SendPiece(Pointer const& connection, std::size_t size, bool isLast);
    void Send(Pointer const& connection, std::string payload, bool isLast);
    void HandOver(StreamsAtHost::Part part);
    bool IsUnderWay(Pointer const& connection) const { return underWay_ && underWay_->sender == connection; }

    Say say_;
    Options options_;
    Listener listener_;
    BusComponent bus_;
    StreamCharacters characters_;
    FindingsReceiver findings_;
    SurfaceStreams surfaces_;
    Encoding encoding_ = Encoding::SingleByte;  // with which the host begins the next stream
    std::shared_ptr<StringProperty> command_;
    std::shared_ptr<StringProperty> response_;
    std::unique_ptr<QSocketNotifier> acceptNotifier_;
    Connections connections_;
    Pointer current_;                                 // whose stream is open
    Encoding encodingOfOpen_ = Encoding::SingleByte;  // in which the host reads it
    bool cancelsOpen_ = false;                        // it ends here, and nothing of it prints
    StreamsAtHost atHost_;
    std::optional<StreamsAtHost::Part> underWay_;  // the packet that the host has not taken yet
    bool interpreting_ = false;                    // the host is at that packet: what it answers now is for its sender
    bool holdsLabels_ = true;                      // its stream, as far as is known
    std::deque<Pointer> jobs_;                     // senders of the streams handed over and not yet done
    Pointer lastJobOf_;                            // sender of the stream that was handed over last
    std::uint8_t lastSession_ = 0;
    unsigned labelsInARow_ = 0;
    Clock::time_point lastTurn_;  // of one that was not about room
    Clock::time_point noRoomBefore_;
    Clock::time_point periodBegan_;
    std::size_t periodBytes_ = 0;  // taken of the open stream since then
    std::optional<Clock::time_point> othersWaitSince_;
    std::optional<PrinterFacts> facts_;  // for the questions that have come together
    Clock::time_point lastLabels_;       // were handed over
    Clock::time_point noPutOffsBefore_;
    std::optional<std::chrono::milliseconds> lookAgain_;  // sooner than usual
    unsigned answersLeft_ = 0;                            // this time
    bool isPumpUnderWay_ = false;
    QTimer quiet_;
};
