#include "desktop/serve/FindingsReceiver.h"

#include <QtCore/QObject>

#include "jobhost/model/FindingMessage.h"

using Zpl::Host::FindingMessage;

FindingsReceiver::FindingsReceiver(BusComponent& bus, QObject& receiver, std::function<std::uint32_t()> packet,
                                   TellEvent tell)
    : packet_(std::move(packet)), tell_(std::move(tell)) {
    property_ = bus.Own<StringProperty>(PropertyNames::ZPLFinding, PropertyGroups::PrintOperations, "");
    property_->SetEveryWriteCounts(true);
    property_->AddCallback([this, &receiver](std::shared_ptr<Property> const& changed) {
        QMetaObject::invokeMethod(
            &receiver, [this, text = changed->ValueText()] { Take(text); }, Qt::QueuedConnection);
    });
}

void FindingsReceiver::Take(std::string const& text) {
    auto const message = FindingMessage::Parse(text);
    if (!message) return;
    auto const& [session, job, finding] = *message;
    std::string line = job.empty() ? finding.Describe() : "job " + Printable(job) + ": " + finding.Describe();
    // Nearly every job of a design program begins with them, and people read that once.
    constexpr std::size_t MostSetup = 1000;
    bool const isSetup = finding.kind == Finding::Kind::SetupCommand;
    if (isSetup && (setup_.size() >= MostSetup || !setup_.insert(finding.text).second)) line.clear();
    tell_({line, "finding",
           [&](JsonWriter& writer) {
               writer.Key("session").Int(message->session).Key("job").String(message->job);
               if (auto const packet = packet_()) writer.Key("packet").Int(packet);
               message->finding.WriteMembers(writer);
           },
           message->finding.text});
}
