#include "plugin/surfaces/PrintDoor.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QUuid>

#include "jobhost/model/StreamToPrint.h"
#include "propertybus/PICLServerAgent.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

using Zpl::Host::StreamTaken;
using Zpl::Host::StreamToPrint;

namespace {

constexpr char const* Taker = ComponentIdentifiers::JobHandler;
constexpr char const* Group = PropertyGroups::PrintOperations;
constexpr int LookAroundPause = 1000;  // milliseconds
constexpr unsigned MostAbsences = 5;   // a property server that is started again is not there for a moment

}  // namespace

PrintDoor::PrintDoor(std::shared_ptr<PublishingPropertyManager> properties, std::shared_ptr<PICLServerAgent> agent)
    : properties_(std::move(properties)),
      agent_(std::move(agent)),
      name_(QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()) {
    connect(&lookAround_, &QTimer::timeout, this, [this] { LookAround(); });
}

PrintDoor::~PrintDoor() = default;

/// Not before a surface prints: the printer's start does not wait for what it may never need.
void PrintDoor::Connect() {
    if (stream_) return;
    stream_ = properties_->Follow<StringProperty>(
        Taker, ExternalAppRegistration::EveryWrite,
        PropertyName{PropertyNames::StreamToPrint, PropertyNameStrings::StreamToPrint, Group}, "");
    taken_ = properties_->Subscribe<StringProperty>(
        Taker, PropertyName{PropertyNames::StreamTaken, PropertyNameStrings::StreamTaken, Group}, "");
    // The properties may outlive this.
    taken_->AddCallback([self = QPointer<PrintDoor>(this)](std::shared_ptr<Property> const& changed) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, text = changed->ValueText()] {
                if (self) self->Hear(text);
            },
            Qt::QueuedConnection);
    });
}

bool PrintDoor::IsOpen() {
    Connect();
    return !agent_ || agent_->WaitUntilAvailable({Taker, Group, PropertyNames::StreamToPrint}, {});
}

void PrintDoor::Print(QByteArray stream, Done done) {
    if (stream.isEmpty()) return done(tr("There is nothing to print."));
    if (stream.size() > LongestStream) return done(tr("The label is too large to be printed from here."));
    if (!IsOpen()) return done(tr("The printer takes nothing at present."));
    waiting_.push_back({std::move(stream), std::move(done)});
    if (!isUnderWay_) HandOver();
}

void PrintDoor::HandOver() {
    isUnderWay_ = true;
    absences_ = 0;
    ++number_;
    Send();
    lookAround_.start(LookAroundPause);
}

void PrintDoor::Send() { stream_->Set(StreamToPrint{name_, number_, waiting_.front().stream.toStdString()}.Text()); }

void PrintDoor::Hear(std::string const& text) {
    auto const taken = StreamTaken::Parse(text);
    if (!isUnderWay_ || !taken || taken->sender != name_ || taken->number != number_) return;
    if (taken->isMissing) return Send();
    End(taken->error.empty()
            ? QString()
            : tr("The label does not print: the stream %1.").arg(QString::fromStdString(taken->error)));
}

void PrintDoor::LookAround() {
    // Of a printer that dies as a whole nobody says that it is gone.
    bool const isThere = IsOpen() && (!agent_ || properties_->IsLinked());
    absences_ = isThere ? 0 : absences_ + 1;
    // It may be lost with a property server, or what was said of it.
    if (absences_ == 0) stream_->Set(StreamToPrint{name_, number_, {}}.Text());
    if (absences_ == MostAbsences) End(tr("The printer has gone; what was sent to it last may not print."));
}

void PrintDoor::End(QString const& error) {
    lookAround_.stop();
    // The bus keeps no stream that is done with.
    stream_->Set("");
    auto const ended = std::move(waiting_.front());
    waiting_.pop_front();
    isUnderWay_ = false;
    QPointer<PrintDoor> const self(this);
    ended.done(error);
    if (self && !isUnderWay_ && !waiting_.empty()) HandOver();
}
