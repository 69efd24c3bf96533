#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "library/EmbeddedPage.h"
#include "library/StreamReader.h"

/// A call that cannot be followed; the text says in one line what is wrong and what to do.
class Misuse : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct EmbeddedStream;

/// A label as a program that embeds the interpreter holds it. It keeps what it needs of its desk alive.
class EmbeddedLabel {
public:
    EmbeddedLabel(std::shared_ptr<EmbeddedStream> stream, FinishedLabel finished);

    unsigned Number() const { return task_.number; }
    unsigned Copies() const { return task_.quantity; }
    std::string const& Text() const { return text_; }
    /// Where its format begins in the stream, in bytes.
    std::uint64_t Offset() const { return task_.format; }

    /// Draws a copy, from 0: the first of all, or the one behind the copy that was drawn last, at once; another one
    /// behind those before it, which are drawn again. Throws what drawing throws, and Misuse.
    std::unique_ptr<EmbeddedPage> Draw(unsigned copy);

private:
    void Answer();

    std::shared_ptr<EmbeddedStream> stream_;
    std::string text_;
    LabelTask task_;
    unsigned next_ = 0;      ///< the copy that goes on from the one drawn last
    unsigned answered_ = 0;  ///< copies that have sent back what their format asks for
};

/// A desk as a program that embeds the interpreter uses it: bytes in, labels out. The stream is read up to the end of
/// a label and no further until that is taken, so that its page need not be drawn twice, and each label finds the
/// picture that the one before it keeps. One thread at a time.
class EmbeddedDesk {
public:
    using Detail = ZplCore::FieldMap::Detail;
    using TakeAnswer = std::function<void(std::string_view)>;

    EmbeddedDesk(DeskSettings const& settings, Detail detail);

    /// Bytes of the stream under way, or of the next one; they may be cut anywhere.
    void Feed(std::string_view bytes);
    /// The stream under way has ended.
    void Finish();
    /// Null if there is none in what was fed.
    std::unique_ptr<EmbeddedLabel> NextLabel();
    /// A JSON array, as of docs/report.md, about the stream under way or the one that was finished last.
    std::string Findings() const;
    /// Takes what streams send back to their sender.
    void SetAnswerReceiver(TakeAnswer take);

    /// What streams share on a desk.
    struct Core;

private:
    void StartStream();
    void ReadOn();
    void ReadAll();
    bool HasLabel() const { return !labels_.empty(); }

    std::shared_ptr<Core> core_;
    Detail const detail_;
    std::shared_ptr<EmbeddedStream> stream_;  ///< null until the first one
    std::string waiting_;                     ///< bytes that are not read yet
    std::size_t read_ = 0;                    ///< of those, how many are
    bool isFinished_ = true;                  ///< no further bytes of the stream will come
    bool isEnded_ = true;                     ///< and all of them have been read
    std::deque<std::unique_ptr<EmbeddedLabel>> labels_;
};
