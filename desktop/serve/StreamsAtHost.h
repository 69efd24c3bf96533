#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "desktop/serve/Connections.h"
#include "jobhost/model/Packet.h"

/// What the host has been given and the printer is not done with: it is given to the next host when the host ends.
///
/// So that what has been taken prints once, whatever process but this one is killed when:
/// - A stream stays here from its first packet until it is over. It is over when the host has taken its last packet and
///   said before that it holds no label, when the print driver has kept its last page or given up its job, or when it
///   is cancelled. The driver works on the thread of this class, so between a page being kept and its job being known
///   as kept nothing of the host or the property server comes.
/// - The next host is not started before all that the one before has said has been heard here, nor before the bus holds
///   the packet that it is to begin with. So what it is given is known to be lost, and nothing that it hears is stale.
/// - The driver knows of which stream a job is (Zpl::Job::OriginPrefix), and how many of its pages it has kept: those
///   do not print again when the job comes again.
/// - A lost property server makes its peers repeat what it may not have told. A host takes a packet of the same number
///   once; and the clearing of a packet counts when its beginning has been told before, so that one that is repeated
///   does not count for the next packet, which is sent again then.
class StreamsAtHost {
public:
    struct Part {
        Zpl::Host::Packet packet;
        Connections::Pointer sender;  ///< null if nobody is to be answered any more

        bool EndsStream() const { return packet.Command == Zpl::Host::Packet::EndOfStream; }
    };
    struct EndOfHost {
        bool wasInterpreting = false;  ///< the packet that it was given last
        bool pagesCame = false;        ///< and have been kept, of any job, since the end before this one
    };
    /// What is lost when the host ends.
    struct Loss {
        bool ofOpenStream = false;                  ///< the one whose end has not been sent yet
        std::vector<Connections::Pointer> senders;  ///< of streams that had not been taken
    };

    static constexpr std::size_t MostBytes = 64UL << 20;  ///< a stream of which there would be more is not kept
    static constexpr unsigned MostEnds = 5;               ///< of hosts, that a stream may have caused,
    static constexpr unsigned MostEndsUntold = 2;         ///< or that came while one was read whose sender still waits

    /// The host is given a new packet, which is numbered here; `after`: in which encoding it leaves the host.
    Part Give(Part part, Encoding after);
    /// The host is given the next packet again; only if IsRepeating, and before any new one.
    Part GiveAgain();
    bool IsRepeating() const { return !again_.empty(); }
    /// The host has taken the packet that it was given last.
    void NoteTaken(bool holdsLabels);
    /// Whether the client has sent something that no host has taken.
    bool IsAwaitedBy(Connections::Pointer const& sender) const;
    /// The printer is done with the stream whose last packet has that number, and so with those before it.
    void NoteOver(std::uint32_t number);
    /// What has been taken is cancelled, but for the newest stream, which may be the one that has cancelled the others.
    void CancelOlder();
    /// So is everything that the host has taken or is to be given again.
    void CancelAll();
    /// The host has ended: the next is given everything again, but for streams that several hosts have ended on.
    Loss Repeat(EndOfHost const& end);
    /// Of all packets that the host has been given.
    std::uint32_t LastNumber() const { return lastNumber_; }
    /// In which encoding a host is that has been given everything again.
    Encoding EncodingAfter() const;

private:
    struct Stream {
        std::vector<Zpl::Host::Packet> packets;
        Connections::Pointer sender;  // until it has been answered
        std::size_t bytes = 0;
        Encoding after = Encoding::SingleByte;
        bool isEnded = false;
        bool isTaken = false;  // to its end
        bool isKept = true;    // its packets are
        bool isGivenUp = false;
        unsigned endsOfHost = 0;  // that it may have caused
        std::uint32_t first = 0;  // number of its first packet,
        std::uint32_t last = 0;   // and of the last one so far
    };

    template <typename Predicate>
    void RemoveIf(Predicate goes);
    bool IsGivenUp(Stream& stream, EndOfHost const& end) const;

    std::deque<Stream> streams_;
    std::deque<Part> again_;
    std::size_t bytes_ = 0;         // of all streams
    std::uint32_t lastNumber_ = 0;  // of all packets
    std::uint32_t given_ = 0;       // number of the packet that the host was given last; 0 if it has none
};
