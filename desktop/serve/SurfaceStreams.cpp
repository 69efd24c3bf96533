#include "desktop/serve/SurfaceStreams.h"

#include <QtCore/QObject>

#include "jobhost/model/StreamToPrint.h"

using Zpl::Host::StreamTaken;
using Zpl::Host::StreamToPrint;

SurfaceStreams::SurfaceStreams(BusComponent& bus, QObject& receiver, Take take, TellEvent tell)
    : take_(std::move(take)), tell_(std::move(tell)) {
    stream_ = bus.Own<StringProperty>(PropertyNames::StreamToPrint, PropertyGroups::PrintOperations, "");
    taken_ = bus.Own<StringProperty>(PropertyNames::StreamTaken, PropertyGroups::PrintOperations, "");
    stream_->SetEveryWriteCounts(true);
    taken_->SetEveryWriteCounts(true);
    stream_->AddCallback([this, &receiver](std::shared_ptr<Property> const& changed) {
        QMetaObject::invokeMethod(
            &receiver, [this, text = changed->ValueText()] { Receive(text); }, Qt::QueuedConnection);
    });
}

void SurfaceStreams::Receive(std::string const& text) {
    // Its writer clears it, so that it takes no memory.
    if (text.empty()) return;
    auto stream = StreamToPrint::Parse(text);
    if (!stream) return tell_("what a surface has sent to be printed is no stream");
    if (stream->bytes.empty()) return Answer(stream->sender, stream->number);
    MakeRoom();
    auto& last = last_[stream->sender];
    if (stream->number <= last.number) return;
    last = {stream->number, false, {}};
    take_(std::move(stream->bytes),
          [this, sender = std::move(stream->sender), number = stream->number](std::string const& failure) {
              auto& entry = last_[sender];
              if (entry.number == number) entry = {number, true, failure};
              taken_->Set(StreamTaken{sender, number, failure}.Text());
          });
}

void SurfaceStreams::Answer(std::string const& writer, std::uint32_t number) const {
    auto const last = last_.find(writer);
    if (last == last_.end() || last->second.number < number)
        return taken_->Set(StreamTaken{writer, number, {}, true}.Text());
    if (last->second.number == number && last->second.isOver)
        taken_->Set(StreamTaken{writer, number, last->second.failure}.Text());
}

/// Of writers that are gone, as far as can be told.
void SurfaceStreams::MakeRoom() {
    constexpr std::size_t MostWriters = 100;
    if (last_.size() < MostWriters) return;
    std::erase_if(last_, [](auto const& entry) { return entry.second.isOver; });
}
