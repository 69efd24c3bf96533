#pragma once

#include <QtCore/QSocketNotifier>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desktop/serve/StreamWatch.h"

/// A client of the printer: what it has sent and nobody has taken yet, how far that is a stream that may be handed
/// over, and the answers that it has not read yet. Whoever holds it may go on using it after it has been closed.
class ClientConnection {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::size_t PieceSize = 64 * 1024;  ///< bytes of one packet; no more is looked at ahead
    static constexpr std::size_t MostQuestions = 8;      ///< that wait for the host before more is looked at
    static constexpr std::size_t MostFormats = 2000;     ///< that a job has room for; a stream of more becomes several
    /// Bytes that a client may send without a label before others come first; a question counts as many.
    static constexpr std::size_t Allowance = 16 * 1024;
    static constexpr std::size_t QuestionCost = 1024;

    /// Owns the socket from now on.
    ClientConnection(int descriptor, StreamState const& start);
    /// Of somebody in this machine who has sent all there is, and reads no answers. `whenOver` is told when all of it
    /// has been taken, or why not.
    ClientConnection(std::string stream, StreamState const& start,
                     std::function<void(std::string const& failure)> whenOver);
    ~ClientConnection();
    ClientConnection(ClientConnection const&) = delete;
    ClientConnection& operator=(ClientConnection const&) = delete;

    /// Takes what has arrived; notes that the client has ended or is gone.
    void Read();
    /// Sends bytes, now or when the client reads; one that lets more than 1 MiB wait is told nothing more. One answer
    /// may be of any size.
    void Answer(std::string const& bytes);
    void Flush();
    /// Ends the connection; its client can still read what was sent.
    void Close();
    /// Ends it with an error to its client, and drops what it has sent. `why`: behind "the stream", for people.
    void Abort(std::string why);

    std::string_view Waiting() const { return std::string_view(received_).substr(taken_); }
    std::size_t UnsentBytes() const { return answers_.size() - sent_; }
    StreamWatch const& Watch() const { return watch_; }
    StreamState const& StartState() const { return start_; }
    /// Handed over of the stream.
    std::uint64_t HandedOver() const { return handedOver_; }

    /// A stream begins with what waits.
    void StartStream(StreamState const& state);
    /// Looks on at what waits, a piece at most and as far as it is worth while; gives the next question that is
    /// noticed, which has to be dealt with before more is looked at.
    std::optional<StreamWatch::Question> LookOn();
    /// Makes a comment of a question amid a stream, of the same length, so that nobody answers it again. False if that
    /// cannot be done.
    bool TakeOut(StreamWatch::Question const& question);
    /// Whether `LookOn` would do anything.
    bool CanLookOn() const;
    /// Whether it has cost much since its last label.
    bool IsDemanding() const { return cost > Allowance; }
    /// Whether all that waits has been looked at.
    bool IsLookedAt() const { return looked_ == Waiting().size(); }

    /// Bytes of what waits that end where the stream may be cut.
    std::size_t UpToCut() const;
    /// Whether what has been handed over ends there, or before it.
    bool StandsAtCut() const { return watch_.SafeCut() >= handedOver_; }
    /// Whether all that waits may be handed over: the client has ended, or has been quiet outside of formats.
    bool IsWhole() const;
    bool IsQuiet() const { return Clock::now() - lastRead >= QuietTime; }
    /// Bytes that may be handed over without waiting for more.
    std::size_t Ready() const;
    /// Whether it is time to do so: nothing more is to be expected soon, or somebody waits for an answer.
    bool IsDue() const;
    std::string Take(std::size_t size);
    /// Bytes that have been looked at.
    std::size_t Looked() const { return looked_; }
    /// Questions that stand before what is handed over are out of our hands.
    unsigned TakeQuestions();
    bool AwaitsHost() const { return !questions.empty() || questionsAtHost > 0; }

    int socket;
    std::unique_ptr<QSocketNotifier> readNotifier;
    std::unique_ptr<QSocketNotifier> writeNotifier;
    Clock::time_point lastRead = Clock::now();
    Clock::time_point waitsSince = lastRead;  ///< for something to print: of its last stream, the end
    Clock::time_point lastTaken;              ///< when the host was done with a packet of it
    std::uint8_t session = 0;
    bool ended = false;                            ///< the client sends no more
    bool broken = false;                           ///< nor reads any more
    std::vector<StreamWatch::Question> questions;  ///< for the host, in what waits
    unsigned questionsAtHost = 0;
    std::string failure;  ///< why not all that it has sent prints, if so
    std::function<void(std::string const& failure)> whenOver = [](std::string const&) {};
    std::uint64_t cost = 0;         ///< of what has come since its last label, as if it were all bytes
    std::uint64_t putOffSince = 0;  ///< a count: it wants to be read or looked at, when others leave time
    std::uint64_t noise = 0;        ///< bytes without a command that were dropped, and not yet told
    std::optional<StreamWatch::Question>
        questionBehind;  ///< for the door; nothing behind it is looked at before it is answered

private:
    static constexpr auto QuietTime = std::chrono::milliseconds(100);
    static constexpr auto DownloadQuietTime = std::chrono::seconds(2);   // for commands that bring data along
    static constexpr auto LongestWait = std::chrono::milliseconds(500);  // of what is whole, for more

    std::string received_;
    std::size_t taken_ = 0;   // bytes of it
    std::size_t looked_ = 0;  // bytes of what waits
    StreamState start_;
    StreamWatch watch_;
    std::uint64_t handedOver_ = 0;
    std::optional<Clock::time_point> wholeSince_;  // there is something that may be handed over
    std::string answers_;
    std::size_t sent_ = 0;  // bytes of them
};
