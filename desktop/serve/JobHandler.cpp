#include "desktop/serve/JobHandler.h"

#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <algorithm>
#include <cerrno>

#include "foundation/Base64.h"
#include "foundation/DebugZones.h"
#include "jobhost/model/Packet.h"

using namespace std::chrono_literals;

namespace {

constexpr auto AnswerTime = 200ms;  // for pages that answer a sender that has ended its stream
constexpr char const* Cancelled = "is cancelled";
constexpr auto AcceptPause = 200ms;  // when the system has no descriptor left

}  // namespace

JobHandler::JobHandler(ThreadFactory& threads, std::filesystem::path const& socket, std::string const& host,
                       unsigned port, Say say, Options options)
    : say_(std::move(say)),
      options_(std::move(options)),
      listener_(host, port),
      bus_(threads, ComponentIdentifiers::JobHandler, socket),
      characters_(bus_.Properties(), *this, say_),
      findings_(
          bus_, *this, [this] { return underWay_ ? underWay_->packet.Number : 0; }, say_),
      surfaces_(
          bus_, *this, [this](auto stream, auto whenOver) { TakeIn(std::move(stream), std::move(whenOver)); }, say_) {
    namespace Group = PropertyGroups;
    command_ = bus_.Own<StringProperty>(PropertyNames::ZPLCommandToProcess, Group::PrintOperations, "");
    response_ = bus_.Own<StringProperty>(PropertyNames::ZPLResponseToProcess, Group::PrintOperations, "");
    response_->SetEveryWriteCounts(true);

    acceptNotifier_ = std::make_unique<QSocketNotifier>(listener_.Descriptor(), QSocketNotifier::Read);
    connect(acceptNotifier_.get(), &QSocketNotifier::activated, this, [this] { AcceptAll(); });

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
    bus_.IsHostThere();  // is known only of what has been asked for
    quiet_.setSingleShot(true);
    connect(&quiet_, &QTimer::timeout, this, [this] { Pump(); });
}

JobHandler::~JobHandler() {
    for (auto const& connection : connections_) connection->Close();
    // What connections leave to the event loop to delete; that may not run any more.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Those who come in a crowd do not wait for a turn of the event loop each.
void JobHandler::AcceptAll() {
    constexpr unsigned AtOnce = 32;
    for (unsigned count = 0; count < AtOnce && Accept(); ++count) {
    }
}

/// False if there is nobody, or no more for now.
bool JobHandler::Accept() {
    if (connections_.IsFull() && !connections_.MakePlace(current_)) {
        int const refused = listener_.Accept();
        if (refused < 0) return false;
        DebugLog(Warning, "one connection too many is refused");
        ::close(refused);
        return true;
    }
    int const descriptor = listener_.Accept();
    if (descriptor < 0) {
        bool const isOut = errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM;
        if (!isOut || connections_.MakePlace(current_)) return isOut;
        // It would be told of the waiting client again and again.
        acceptNotifier_->setEnabled(false);
        QTimer::singleShot(AcceptPause, this, [this] { acceptNotifier_->setEnabled(true); });
        return false;
    }
    auto& connection = connections_.Add(descriptor, characters_.State(encoding_));
    connection.session = ++lastSession_;
    connect(connection.readNotifier.get(), &QSocketNotifier::activated, this, [this, &connection] {
        if (connection.IsDemanding()) {
            connection.readNotifier->setEnabled(false);
            connections_.PutOff(connection);
        } else {
            connection.Read();
        }
        PumpSoon();
    });
    connect(connection.writeNotifier.get(), &QSocketNotifier::activated, this, [this, &connection] {
        connection.Flush();
        PumpSoon();
    });
    return true;
}

/// A surface of this printer is a client like any other, who has hung up.
void JobHandler::TakeIn(std::string stream, SurfaceStreams::WhenOver whenOver) {
    auto connection =
        std::make_shared<Connection>(std::move(stream), characters_.State(encoding_), std::move(whenOver));
    connection->session = ++lastSession_;
    connections_.Add(std::move(connection));
    Pump();
}

void JobHandler::TakeResponse(std::string const& text) {
    auto const response = zpl::NetworkResponse::Parse(text);
    if (!response) return;
    switch (response->status) {
        case zpl::NetworkResponse::Status::Processing: interpreting_ = underWay_.has_value(); break;
        case zpl::NetworkResponse::Status::Done: NoteDone(); break;
        case zpl::NetworkResponse::Status::Answer: {
            // Outside the interpretation of a packet it is pages that answer, and those of the newest job are drawn
            // right behind its last packet.
            auto const receiver = interpreting_ ? underWay_->sender : lastJobOf_;
            auto const bytes = Base64::Decode(response->data.value_or(""));
            if (receiver && bytes) SendAnswer(*receiver, *bytes);
            break;
        }
    }
}

/// Jobs are done in the order in which they were handed over, but for a stream without labels, which is done before its
/// last packet is.
void JobHandler::NoteDone() {
    if (!jobs_.empty()) interpreting_ ? jobs_.pop_back() : jobs_.pop_front();
    if (interpreting_) holdsLabels_ = false;
    Pump();
}

void JobHandler::NotePacketTaken() {
    if (!underWay_) return;
    // Of a packet before this one, told again by a lost server's peer; it has taken this one's place on the bus.
    if (!interpreting_) return command_->Set(underWay_->packet.Text());
    atHost_.NoteTaken(holdsLabels_);
    auto const part = *std::exchange(underWay_, std::nullopt);
    interpreting_ = false;
    if (part.EndsStream()) lastJobOf_ = part.sender;
    if (part.sender) {
        part.sender->lastTaken = Clock::now();
        part.sender->questionsAtHost = 0;
    }
    Pump();
}

void JobHandler::SendAnswer(Connection& connection, std::string const& bytes) {
    if (!options_.answers) return;
    connections_.Answer(connection, bytes);
    say_({"", "answer",
          [&](JsonWriter& writer) { writer.Key("session").Int(connection.session).Key("text").String(bytes); }});
}

void JobHandler::ForgetJobs() {
    jobs_.clear();
    atHost_.CancelOlder();
    Pump();
}

bool JobHandler::IsHostGone() { return !bus_.IsHostThere(); }

void JobHandler::HostEnded(bool pagesCame) {
    auto const loss = atHost_.Repeat({interpreting_, pagesCame});
    interpreting_ = false;
    underWay_.reset();
    lastJobOf_.reset();
    jobs_.clear();
    encoding_ = atHost_.EncodingAfter();
    // Who has not been told that a stream is taken is told that it is not.
    if (loss.ofOpenStream) {
        current_.reset();
        cancelsOpen_ = false;
    }
    for (auto const& sender : loss.senders) {
        sender->Abort("has failed twice as it was read");
        sender->questionsAtHost = 0;
    }
    if (!atHost_.IsRepeating()) command_->Set("");
    Pump();
}

unsigned JobHandler::DropWaiting() {
    atHost_.CancelAll();
    unsigned dropped = 0;
    for (auto const& connection : connections_) {
        if (connection == current_ || !connection->IsDue() || connection->Watch().Formats() == 0) continue;
        DropReady(*connection);
        connection->failure = Cancelled;
        ++dropped;
    }
    cancelsOpen_ = current_ != nullptr;
    if (current_) current_->failure = Cancelled;
    options_.onCancelled(atHost_.LastNumber());
    Pump();
    return dropped;
}

void JobHandler::DropReady(Connection& connection) {
    auto const state = connection.Watch().StateAtCut();
    connection.Take(connection.Ready());
    connection.StartStream(state);
}

void JobHandler::RemoveFinished() {
    connections_.RemoveIf([this](Pointer const& connection) {
        bool const isHeard = connection->Waiting().empty() && connection != current_ && !connection->AwaitsHost() &&
                             !atHost_.IsAwaitedBy(connection) && !connection->questionBehind;
        bool const isDone = connection->ended && isHeard &&
                            (connection->broken || (connection->UnsentBytes() == 0 && !MayBeAnswered(connection)));
        if (isDone || connection->broken) connection->Close();
        if (isDone) connection->whenOver(connection->failure);
        return isDone;
    });
}

/// While its last packet is interpreted, and for the moment in which the first pages of its job are drawn.
bool JobHandler::MayBeAnswered(Pointer const& connection) const {
    if (IsUnderWay(connection)) return true;
    bool const isAtWork = std::find(jobs_.begin(), jobs_.end(), connection) != jobs_.end();
    return isAtWork && lastJobOf_ == connection && Clock::now() - connection->lastTaken < AnswerTime;
}

void JobHandler::Send(Pointer const& connection, std::string payload, bool isLast) {
    Zpl::Host::Packet packet;
    packet.SessionId = connection->session;
    packet.Command = isLast ? Zpl::Host::Packet::EndOfStream : 0;
    packet.payload = std::move(payload);
    // The end of a stream completes its last command only together with some bytes.
    if (isLast && packet.payload.empty()) packet.payload.push_back('\n');
    auto part = atHost_.Give({std::move(packet), connection}, encoding_);
    options_.onPacket(part.packet);
    HandOver(std::move(part));
}

void JobHandler::HandOver(StreamsAtHost::Part part) {
    underWay_ = std::move(part);
    holdsLabels_ = true;
    if (underWay_->EndsStream()) jobs_.push_back(underWay_->sender);
    command_->Set(underWay_->packet.Text());
}
