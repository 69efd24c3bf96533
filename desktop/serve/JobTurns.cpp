// How the job handler looks at what clients send, and chooses what the host reads next.

#include <algorithm>
#include <array>

#include "desktop/serve/JobHandler.h"
#include "desktop/serve/ValueAnswers.h"

using namespace std::chrono_literals;

namespace {

constexpr auto LookAgain = 50ms;
constexpr auto IdleTime = 1s;             // without labels, before a stream is taken in that is not complete
constexpr std::size_t JobSize = 1 << 20;  // a stream of more becomes several jobs
constexpr unsigned LabelsInARow = 3;      // streams with labels, while somebody waits for an answer
constexpr unsigned MostJobs = 16;         // handed over and not yet done
constexpr unsigned AnswersAtOnce = 64;    // of the door, to all clients
constexpr std::size_t FewClients = 64;
constexpr auto PutOffTime = 1ms;                 // at a time, for clients that cost much,
constexpr int PutOffShare = 4;                   // and the part of all time, its reciprocal, while others print:
constexpr auto PrintingTime = 200ms;             // labels were handed over within it
constexpr auto NoiseEnd = 400ms;                 // without more of it
constexpr auto RoomPause = 10s;                  // when a stream that was taken in unfinished has held up others
constexpr std::uint64_t AllNoise = 256UL << 20;  // bytes without a command, of all connections,
constexpr std::uint64_t MostNoise = 4UL << 20;   // and of one, if there are few

/// 7-bit text as a stream of that encoding has it.
std::string InEncoding(std::string_view text, Encoding encoding) {
    if (encoding == Encoding::SingleByte || encoding == Encoding::Utf8) return std::string(text);
    std::string wide;
    for (char const c : text) wide += encoding == Encoding::Utf16Le ? std::string{c, '\0'} : std::string{'\0', c};
    return wide;
}

}  // namespace

/// Once for all connections that have something at this moment.
void JobHandler::PumpSoon() {
    if (std::exchange(isPumpUnderWay_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { Pump(); }, Qt::QueuedConnection);
}

void JobHandler::Pump() {
    isPumpUnderWay_ = false;
    connections_.SetShares();
    lookAgain_.reset();
    facts_.reset();
    LookAtAll();
    GiveTurns();
    if (ServePutOffs()) GiveTurns();
    RemoveFinished();
    WaitForMore();
}

void JobHandler::LookAtAll() {
    answersLeft_ = AnswersAtOnce;
    for (auto const& connection : connections_) {
        if (!connection->IsDemanding())
            ReadOn(*connection);
        else if (connection->CanLookOn() || (connection->questionBehind && !connection->AwaitsHost()))
            connections_.PutOff(*connection);
    }
    // Those who are not answered this time are the first the next.
    if (answersLeft_ == 0) connections_.PutFirstBehind();
}

/// Reads and looks at what clients send who have cost much since their last label, in turns, and while others print for
/// a part of the time only. True if there was anything.
bool JobHandler::ServePutOffs() {
    auto const start = Clock::now();
    bool const isPrinting = start - lastLabels_ < PrintingTime;
    auto const pause = [&](Clock::time_point now) {
        return isPrinting ? std::chrono::ceil<std::chrono::milliseconds>(noPutOffsBefore_ - now) : 0ms;
    };
    if (!connections_.HasPutOffs()) return false;
    if (pause(start) > 0ms) {
        lookAgain_ = pause(start);
        return false;
    }
    auto now = start;
    while (now - start < PutOffTime) {
        auto const next = connections_.NextPutOff();
        if (!next) break;
        if (!next->ended && !connections_.IsAtShare(*next)) next->Read();
        answersLeft_ = AnswersAtOnce;
        ReadOn(*next);
        now = Clock::now();
    }
    noPutOffsBefore_ = now + (PutOffShare - 1) * (now - start);
    if (lookAgain_ || connections_.HasPutOffs()) lookAgain_ = pause(now);
    return true;
}

void JobHandler::GiveTurns() {
    if (atHost_.IsRepeating() && !underWay_) HandOver(atHost_.GiveAgain());
    if (Pointer const open = current_; open && !underWay_) GoOn(open);
    while (!underWay_ && !current_) {
        auto const next = NextInTurn();
        if (!next) return DropNoise();
        Begin(next);
    }
}

/// Quiet streams are looked at again; with nothing waiting the process sleeps.
void JobHandler::WaitForMore() {
    bool waits = current_ != nullptr;
    for (auto const& connection : connections_) {
        bool const isPutOff = connection->putOffSince > 0;
        if (!connection->ended) connection->readNotifier->setEnabled(!connections_.IsAtShare(*connection) && !isPutOff);
        waits = waits || connection->noise > 0 ||
                (connection->ended ? MayBeAnswered(connection) : !connection->Waiting().empty());
    }
    if (lookAgain_)
        quiet_.start(*lookAgain_);
    else if (waits && !quiet_.isActive())
        quiet_.start(LookAgain);
}

bool JobHandler::IsCrowded() const { return connections_.Size() > FewClients; }

void JobHandler::ReadOn(Connection& connection) {
    constexpr unsigned MostQuestions = 256;
    for (unsigned count = 0; count < MostQuestions; ++count) {
        if (connection.questionBehind) {
            // Answers come in the order of the questions.
            if (connection.AwaitsHost()) return;
            if (answersLeft_ == 0) break;
            AnswerBehind(connection);
        }
        auto const question = connection.LookOn();
        if (!question) break;
        DealWith(connection, *question);
    }
    if (connection.CanLookOn() || connection.questionBehind) lookAgain_ = 0ms;
}

void JobHandler::DealWith(Connection& connection, Question const& question) {
    connection.cost += Connection::QuestionCost;
    if (question.kind == Question::Kind::Foreign)
        return say_("a stream holds the line \"" + question.text.substr(0, 40) +
                    "\", which is of another label language");
    // Nobody waits for the answers to a client that is gone.
    bool const isForHost = question.kind == Question::Kind::Host && !connection.broken;
    if (isForHost) return connection.questions.push_back(question);
    connection.TakeOut(question);
    if (!connection.broken) connection.questionBehind = question;
}

void JobHandler::AnswerBehind(Connection& connection) {
    auto const question = *std::exchange(connection.questionBehind, std::nullopt);
    --answersLeft_;
    if (!options_.answers) return;
    bool const isByName = question.kind == Question::Kind::Line;
    SendAnswer(connection,
               isByName ? AnswerByName(Facts(), question.text) : question.row->answer(Facts(), question.text));
}

PrinterFacts const& JobHandler::Facts() {
    if (facts_) return *facts_;
    PrinterFacts& facts = facts_.emplace(options_.facts());
    auto const state = characters_.State(encoding_);
    facts.formatPrefix = state.formatPrefix;
    facts.controlPrefix = state.controlPrefix;
    facts.delimiter = state.delimiter;
    facts.waitingJobs = static_cast<unsigned>(jobs_.size());
    return facts;
}

JobHandler::Want JobHandler::WantOf(Connection const& connection) const {
    bool const mayPrint = jobs_.size() < MostJobs;
    if (!connection.Watch().HasCommands()) return Want::Nothing;
    if (connection.IsDue()) {
        if (connection.Watch().Labels() == 0) return Want::Answers;
        return mayPrint ? Want::Labels : Want::Nothing;
    }
    if (connection.UpToCut() > 0) return Want::Nothing;
    if (!connection.questions.empty()) return Want::Answers;
    return connections_.IsAtShare(connection) && mayPrint ? Want::Room : Want::Nothing;
}

bool JobHandler::OthersWait() {
    return std::any_of(connections_.begin(), connections_.end(), [this](Pointer const& connection) {
        if (connection == current_) return false;
        Want const want = WantOf(*connection);
        return want == Want::Labels || want == Want::Answers;
    });
}

/// Labels and answers take turns, so that neither can hold up the other; room is given when nobody wants these.
JobHandler::Pointer JobHandler::NextInTurn() {
    std::array<Pointer, 4> first;
    for (auto const& connection : connections_) {
        auto& place = first[static_cast<std::size_t>(WantOf(*connection))];
        if (!place) place = connection;
    }
    bool const isTurnOfAnswers = labelsInARow_ >= LabelsInARow;
    Want const preferred = isTurnOfAnswers ? Want::Answers : Want::Labels;
    Want const other = isTurnOfAnswers ? Want::Labels : Want::Answers;
    for (Want const want : {preferred, other}) {
        auto const& found = first[static_cast<std::size_t>(want)];
        if (!found) continue;
        labelsInARow_ = want == Want::Labels ? labelsInARow_ + 1 : 0;
        lastTurn_ = Clock::now();
        return found;
    }
    auto const now = Clock::now();
    bool const isIdle = now - lastTurn_ >= IdleTime && now >= noRoomBefore_;
    return isIdle ? first[static_cast<std::size_t>(Want::Room)] : nullptr;
}

/// Whether it has been looked at as it would be read now: another stream may have changed that. Looks anew if not.
bool JobHandler::IsUpToDate(Connection& connection) {
    auto const state = characters_.State(encoding_);
    if (connection.StartState() == state) return true;
    connection.StartStream(state);
    ReadOn(connection);
    return false;
}

void JobHandler::Begin(Pointer const& connection) {
    if (!IsUpToDate(*connection)) return;
    connections_.PutBehind(connection);
    if (!connection->IsDue() && !connection->questions.empty()) return AskBeside(connection);
    current_ = connection;
    periodBegan_ = Clock::now();
    periodBytes_ = 0;
    encodingOfOpen_ = encoding_;
    othersWaitSince_.reset();
    GoOn(connection);
}

/// Hands over more of the open stream, as far as it is complete; ends it where nothing speaks for waiting.
void JobHandler::GoOn(Pointer const& connection) {
    if (std::exchange(cancelsOpen_, false)) return CancelOpen(connection);
    if (std::size_t const size = connection->Ready(); size > 0) {
        std::size_t const piece = std::min(size, Connection::PieceSize);
        return SendPiece(connection, piece, piece == size && EndsWith(*connection, piece));
    }
    if (connection->ended && connection->Waiting().empty()) return SendPiece(connection, 0, true);
    if (connection->HandedOver() == 0 || !connection->StandsAtCut()) return GoOnInside(connection);
    bool const isAtShare = connections_.IsAtShare(*connection);
    if (isAtShare || EndsWith(*connection, 0)) SendPiece(connection, 0, true);
}

bool JobHandler::EndsWith(Connection const& connection, std::size_t piece) {
    if (connection.IsWhole() || !connection.questions.empty() || connection.HandedOver() + piece >= JobSize ||
        connection.Watch().Formats() >= Connection::MostFormats)
        return true;
    return (connection.IsLookedAt() && connection.IsQuiet()) || OthersWait();
}

void JobHandler::GoOnInside(Pointer const& connection) {
    if (connection->Watch().OpenBytes() > options_.longestFormat)
        return Refuse(connection, "is longer than " + std::to_string(options_.longestFormat >> 20) + " MiB");
    auto const now = Clock::now();
    if (now - periodBegan_ >= options_.ratePeriod) {
        auto const wanted = options_.leastRate * static_cast<std::size_t>(options_.ratePeriod.count()) / 1000;
        // What waits here has come in time.
        if (periodBytes_ + connection->Waiting().size() < wanted)
            return Refuse(connection, "comes at less than " + std::to_string(options_.leastRate) + " bytes a second");
        periodBegan_ = now;
        periodBytes_ = 0;
    }
    if (!OthersWait())
        othersWaitSince_.reset();
    else if (!othersWaitSince_)
        othersWaitSince_ = now;
    // Among many clients there will be more of the kind.
    auto const hold = IsCrowded() ? options_.longestHold / 5 : options_.longestHold;
    if (othersWaitSince_ && now - *othersWaitSince_ >= hold) {
        noRoomBefore_ = now + RoomPause;
        return Refuse(connection, "has held up others for " + std::to_string(hold.count()) + " ms");
    }
    std::size_t const size = std::min(connection->Looked(), Connection::PieceSize);
    if (size > 0) SendPiece(connection, size, false);
}

/// The host makes a job of what it has been given; the rest of what has come is dropped.
void JobHandler::CancelOpen(Pointer const& connection) {
    if (connection->StandsAtCut()) {
        for (; connection->Ready() > 0; ReadOn(*connection)) DropReady(*connection);
        EndOpen(connection);
    } else {
        Refuse(connection, "is cancelled");
    }
    options_.onCancelled(atHost_.LastNumber());
}

/// With nothing more than has been handed over.
void JobHandler::EndOpen(Pointer const& connection) {
    current_.reset();
    encoding_ = encodingOfOpen_;
    Send(connection, {}, true);
}

/// A host that asks amid a label expects the answer at once, but the label is only handed over when it is complete. So
/// the questions go ahead of it, in a stream that breaks off in a format too.
void JobHandler::AskBeside(Pointer const& connection) {
    auto const state = characters_.State(encoding_);
    std::string stream = {state.formatPrefix, 'X', 'A'};
    for (auto const& question : std::exchange(connection->questions, {})) {
        if (!connection->TakeOut(question)) continue;
        stream += state.controlPrefix;
        stream += question.row->letters;
        ++connection->questionsAtHost;
    }
    Send(connection, InEncoding(stream, encoding_), true);
}

/// What holds nothing for the host needs no turn of it. That is certain when nothing else waits for one.
void JobHandler::DropNoise() {
    for (auto const& connection : connections_) {
        bool const hasCommands = connection->Watch().HasCommands();
        if (hasCommands) connection->noise = 0;
        if (hasCommands || !IsUpToDate(*connection)) continue;
        if (!connection->Waiting().empty()) DropNoise(*connection);
        TellNoise(*connection);
    }
}

void JobHandler::DropNoise(Connection& connection) {
    bool const isEnd = connection.IsWhole();
    std::size_t const size = connection.Ready();
    if (!isEnd && size < Connection::PieceSize / 2) return;
    auto const state = connection.Watch().StateAtCut();
    if (connection.Watch().IsNoise()) connection.noise += size;
    connection.Take(size);
    connection.StartStream(state);
    if (connection.noise <= std::min(MostNoise, AllNoise / connections_.Size())) return;
    say_("a connection is closed: it has sent " + std::to_string(connection.noise) +
         " bytes without a command; the prefixes are " + characters_.Prefixes());
    connection.Abort("holds no command");
}

void JobHandler::TellNoise(Connection& connection) {
    bool const isQuiet = connection.ended || Clock::now() - connection.lastRead >= NoiseEnd;
    if (!isQuiet || !connection.Waiting().empty()) return;
    if (std::uint64_t const bytes = std::exchange(connection.noise, 0)) {
        connection.failure = "holds no command";
        say_("a stream of " + std::to_string(bytes) + " bytes holds no command: the prefixes are " +
             characters_.Prefixes());
    }
}

void JobHandler::Refuse(Pointer const& connection, std::string const& why) {
    bool const isFormat = connection->Watch().InFormat();
    say_(std::string("a connection is closed: its ") + (isFormat ? "label" : "command") + ' ' + why);
    connection->Abort(why);
    if (connection == current_) EndOpen(connection);
}

void JobHandler::TellBreakOff(Connection& connection) const {
    auto const& watch = connection.Watch();
    if (!connection.ended || !watch.InFormat()) return;
    connection.failure = "ends amid a label";
    char const prefix = watch.State().formatPrefix;
    say_("a connection has ended amid a label, which is not printed: after " + std::to_string(watch.OpenBytes()) +
         " bytes from " + prefix + "XA no " + prefix + "XZ has come");
}

void JobHandler::SendPiece(Pointer const& connection, std::size_t size, bool isLast) {
    bool const isAll = size == connection->Waiting().size();
    if (isLast && isAll) TellBreakOff(*connection);
    auto const state = isAll ? connection->Watch().State() : connection->Watch().StateAtCut();
    std::string payload = connection->Take(size);
    periodBytes_ += size;
    encodingOfOpen_ = state.encoding;
    connection->questionsAtHost += connection->TakeQuestions();
    connection->waitsSince = Clock::now();
    if (connection->Watch().Labels() > 0) {
        connection->cost = 0;
        lastLabels_ = connection->waitsSince;
    }
    if (isLast) {
        encoding_ = state.encoding;
        connection->StartStream(state);
        current_.reset();
    }
    Send(connection, std::move(payload), isLast);
}
