#include "desktop/serve/StreamsAtHost.h"

#include <algorithm>

#include "foundation/DebugZones.h"

template <typename Predicate>
void StreamsAtHost::RemoveIf(Predicate goes) {
    std::erase_if(streams_, [&](Stream& stream) {
        if (!goes(stream)) return false;
        bytes_ -= stream.bytes;
        return true;
    });
}

StreamsAtHost::Part StreamsAtHost::Give(Part part, Encoding after) {
    given_ = part.packet.Number = ++lastNumber_;
    if (streams_.empty() || streams_.back().isEnded) streams_.emplace_back().first = lastNumber_;
    Stream& stream = streams_.back();
    stream.last = lastNumber_;
    stream.isEnded = part.EndsStream();
    stream.after = after;
    stream.sender = part.sender;
    std::size_t const size = part.packet.payload.size();
    if (bytes_ + size > MostBytes) stream.isKept = false;
    if (stream.isKept) {
        stream.bytes += size;
        bytes_ += size;
        stream.packets.push_back(part.packet);
    } else {
        bytes_ -= std::exchange(stream.bytes, 0);
        stream.packets.clear();
    }
    return part;
}

StreamsAtHost::Part StreamsAtHost::GiveAgain() {
    Part part = std::move(again_.front());
    again_.pop_front();
    given_ = part.packet.Number;
    return part;
}

void StreamsAtHost::NoteTaken(bool holdsLabels) {
    auto const stream = std::ranges::find(streams_, given_, &Stream::last);
    if (stream == streams_.end() || !stream->isEnded) return;
    stream->isTaken = true;
    // It has been answered.
    stream->sender.reset();
    if (!holdsLabels) RemoveIf([&](Stream const& each) { return each.last == given_; });
}

bool StreamsAtHost::IsAwaitedBy(Connections::Pointer const& sender) const {
    return std::ranges::find(streams_, sender, &Stream::sender) != streams_.end();
}

void StreamsAtHost::NoteOver(std::uint32_t number) {
    RemoveIf([&](Stream const& stream) { return stream.isEnded && stream.last <= number; });
}

void StreamsAtHost::CancelOlder() {
    RemoveIf([&](Stream const& stream) { return stream.isTaken && stream.last != given_; });
}

void StreamsAtHost::CancelAll() {
    auto const waits = [&](Stream const& stream) { return stream.isEnded && stream.first > given_; };
    for (auto const& stream : streams_) {
        if (!waits(stream)) continue;
        std::erase_if(again_, [&](Part const& part) {
            return part.packet.Number >= stream.first && part.packet.Number <= stream.last;
        });
    }
    RemoveIf([&](Stream const& stream) { return stream.isTaken || waits(stream); });
}

/// Nobody tells what has ended the host. It may have been interpreting what it was given last, or drawing pages of that
/// or of the first job. Where pages come, the first job goes on, and an end is no fault of it.
bool StreamsAtHost::IsGivenUp(Stream& stream, EndOfHost const& end) const {
    bool const isNewest = stream.first <= given_ && given_ <= stream.last;
    bool const isFirst = &stream == &streams_.front();
    bool const isInterpreted = isNewest && end.wasInterpreting && stream.sender;
    unsigned const most = isInterpreted ? MostEndsUntold : MostEnds;
    if (isInterpreted || (!end.pagesCame && (isNewest || isFirst))) ++stream.endsOfHost;
    if (stream.first > given_) return false;
    if (!stream.isKept)
        DebugLog(Error, "the host has ended, and with it a stream that is too large to be kept");
    else if (stream.endsOfHost >= most)
        DebugLog(Error, "the host ends on what it is sent; the stream is dropped");
    return !stream.isKept || stream.endsOfHost >= most;
}

StreamsAtHost::Loss StreamsAtHost::Repeat(EndOfHost const& end) {
    Loss loss;
    for (auto& stream : streams_) {
        stream.isGivenUp = IsGivenUp(stream, end);
        if (!stream.isGivenUp) continue;
        if (stream.sender) loss.senders.push_back(stream.sender);
        if (!stream.isEnded) loss.ofOpenStream = true;
    }
    RemoveIf([](Stream const& stream) { return stream.isGivenUp; });
    given_ = 0;
    again_.clear();
    for (auto& stream : streams_) {
        stream.isTaken = false;
        for (auto const& packet : stream.packets) again_.push_back({packet, stream.sender});
    }
    return loss;
}

Encoding StreamsAtHost::EncodingAfter() const {
    auto const last = std::ranges::find_if(streams_.rbegin(), streams_.rend(), &Stream::isEnded);
    return last == streams_.rend() ? Encoding::SingleByte : last->after;
}
