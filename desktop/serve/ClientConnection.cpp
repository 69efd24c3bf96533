#include "desktop/serve/ClientConnection.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "desktop/serve/HostAnswers.h"
#include "foundation/DebugZones.h"
#include "frontend/stream/Ascii.h"

namespace {

constexpr std::size_t MostAnswers = 1 << 20;  // bytes that may wait for a client when the next answer comes

}  // namespace

ClientConnection::ClientConnection(int descriptor, StreamState const& start)
    : socket(descriptor),
      readNotifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read)),
      writeNotifier(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write)),
      start_(start),
      watch_(start) {
    writeNotifier->setEnabled(false);
}

ClientConnection::ClientConnection(std::string stream, StreamState const& start,
                                   std::function<void(std::string const& failure)> whenOver)
    : socket(-1),
      ended(true),
      broken(true),
      whenOver(std::move(whenOver)),
      received_(std::move(stream)),
      start_(start),
      watch_(start) {}

ClientConnection::~ClientConnection() { Close(); }

void ClientConnection::Close() {
    ended = broken = true;
    if (socket < 0) return;
    // One of them may be the reason for this call.
    for (auto* const notifier : {readNotifier.release(), writeNotifier.release()}) {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    ::close(std::exchange(socket, -1));
    answers_ = {};
    sent_ = 0;
}

void ClientConnection::Abort(std::string why) {
    failure = std::move(why);
    linger const atOnce{1, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    Close();
    received_ = {};
    taken_ = 0;
    questionBehind.reset();
    StartStream(start_);
}

void ClientConnection::Read() {
    char bytes[PieceSize];
    ssize_t const count = ::recv(socket, bytes, IsDemanding() ? sizeof bytes : Allowance, 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count <= 0) {
        ended = true;
        broken = count < 0;
        readNotifier->setEnabled(false);
        return;
    }
    received_.append(bytes, static_cast<std::size_t>(count));
    cost += static_cast<std::size_t>(count);
    lastRead = Clock::now();
}

void ClientConnection::Answer(std::string const& bytes) {
    if (broken) return;
    if (UnsentBytes() > MostAnswers) {
        DebugLog(Warning, "a client does not read its answers; they are dropped");
        answers_.clear();
        sent_ = 0;
        broken = true;
        return;
    }
    if (sent_ > answers_.size() / 2) answers_.erase(0, std::exchange(sent_, 0));
    answers_ += bytes;
    Flush();
}

void ClientConnection::Flush() {
    while (sent_ < answers_.size() && !broken) {
        ssize_t const count = ::send(socket, answers_.data() + sent_, answers_.size() - sent_, MSG_NOSIGNAL);
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) break;
        if (count < 0) broken = true;
        if (count > 0) sent_ += static_cast<std::size_t>(count);
    }
    if (sent_ == answers_.size()) {
        answers_ = {};
        sent_ = 0;
    }
    if (writeNotifier) writeNotifier->setEnabled(!answers_.empty() && !broken);
}

void ClientConnection::StartStream(StreamState const& state) {
    start_ = state;
    watch_ = StreamWatch(state);
    looked_ = 0;
    handedOver_ = 0;
    wholeSince_.reset();
    questions.clear();
}

bool ClientConnection::CanLookOn() const {
    if (IsLookedAt() || questionBehind || questions.size() >= MostQuestions) return false;
    bool const handsOver = UpToCut() > 0 || !StandsAtCut();
    return !handsOver || (looked_ < PieceSize && (watch_.Formats() < MostFormats || UpToCut() == 0));
}

std::optional<StreamWatch::Question> ClientConnection::LookOn() {
    constexpr std::size_t Step = 4096;
    for (std::size_t const end = looked_ + PieceSize; looked_ < end && CanLookOn();) {
        auto progress = watch_.Read(Waiting().substr(looked_, Step));
        looked_ += progress.read;
        if (!wholeSince_ && UpToCut() > 0) wholeSince_ = Clock::now();
        if (progress.question) return std::move(progress.question);
    }
    return std::nullopt;
}

bool ClientConnection::TakeOut(StreamWatch::Question const& question) {
    if (question.begin < handedOver_) return false;
    std::size_t const begin = taken_ + static_cast<std::size_t>(question.begin - handedOver_);
    if (question.standsAlone) {
        std::fill_n(received_.begin() + static_cast<std::ptrdiff_t>(begin), question.end - question.begin, ' ');
        return true;
    }
    Encoding const encoding = question.state.encoding;
    bool const isWide = encoding == Encoding::Utf16Le || encoding == Encoding::Utf16Be;
    std::size_t const unit = isWide ? 2 : 1;
    std::size_t const low = encoding == Encoding::Utf16Be ? 1 : 0;
    auto const byte = [&](std::size_t index) -> char& { return received_[begin + index * unit + low]; };
    std::string_view const letters = question.row->letters;
    if (begin + 3 * unit > received_.size() || ToAsciiUpper(byte(1)) != letters[0] ||
        ToAsciiUpper(byte(2)) != letters[1])
        return false;
    std::string const comment = {question.state.formatPrefix, 'F', 'X'};
    for (std::size_t i = 0; i < comment.size(); ++i) byte(i) = comment[i];
    return true;
}

std::size_t ClientConnection::UpToCut() const {
    std::uint64_t const cut = watch_.SafeCut();
    return cut > handedOver_ ? static_cast<std::size_t>(cut - handedOver_) : 0;
}

bool ClientConnection::IsWhole() const {
    if (!IsLookedAt()) return false;
    if (ended) return true;
    if (watch_.InFormat() || watch_.InLetters()) return false;
    auto const wanted = watch_.InDownload() ? Clock::duration(DownloadQuietTime) : Clock::duration(QuietTime);
    return Clock::now() - lastRead >= wanted;
}

std::size_t ClientConnection::Ready() const { return IsWhole() ? Waiting().size() : UpToCut(); }

bool ClientConnection::IsDue() const {
    if (Waiting().empty()) return false;
    if (IsWhole()) return true;
    if (UpToCut() == 0) return false;
    bool const isEnough = !IsLookedAt() && !CanLookOn();
    return ended || !questions.empty() || questionBehind || isEnough || IsQuiet() ||
           (wholeSince_ && Clock::now() - *wholeSince_ >= LongestWait);
}

std::string ClientConnection::Take(std::size_t size) {
    std::string bytes(Waiting().substr(0, size));
    taken_ += size;
    handedOver_ += size;
    looked_ -= std::min(looked_, size);
    if (taken_ == received_.size()) {
        received_ = {};
        taken_ = 0;
    } else if (taken_ > received_.size() / 2) {
        received_.erase(0, taken_);
        received_.shrink_to_fit();
        taken_ = 0;
    }
    return bytes;
}

unsigned ClientConnection::TakeQuestions() {
    auto const first =
        std::find_if(questions.begin(), questions.end(), [this](auto const& q) { return q.begin >= handedOver_; });
    auto const count = static_cast<unsigned>(first - questions.begin());
    questions.erase(questions.begin(), first);
    return count;
}
