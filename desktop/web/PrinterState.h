#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Json.h"

/// What the printer behind this has told, in the lines of `zpl serve --json`, kept within bounds. Any thread may ask.
class PrinterState {
public:
    /// What does not change while the printer runs.
    struct Printer {
        std::string address;  ///< that print streams are taken at
        std::string out;      ///< folder of the pages
        std::string objects;  ///< folder of stored formats and graphics
        std::string size;     ///< of its labels, as "4x6in"
        unsigned dpi = 203;
    };

    /// Takes a line.
    void Take(std::string_view line);

    std::optional<Printer> About() const;
    /// As JSON objects.
    std::string StateJson() const;
    std::string JobsJson() const;
    std::string LogJson() const;
    /// Nothing if there is no such job.
    std::optional<std::string> JobJson(std::string const& id) const;
    /// The stream that a job was made of; nothing if it is not kept.
    std::optional<std::string> StreamOf(std::string const& id) const;
    /// The file of a page that has printed, from 1; empty if there is none.
    std::string PageFile(std::string const& id, unsigned page) const;
    /// The events behind that of number `last`, with their numbers, as a feed of events (text/event-stream); `last`
    /// moves on. An event "lost" stands for those that are not kept any more.
    std::string EventsAfter(std::uint64_t& last) const;
    /// The number of the newest event.
    std::uint64_t LastEvent() const;

private:
    struct Event {
        std::string json;  ///< one object, without its end
        std::string time;
    };
    struct Stream {
        std::uint32_t first = 0;  ///< packets that brought it
        std::uint32_t last = 0;
        int session = -1;
        std::optional<std::string> bytes;  ///< nothing if it was too long to be kept
        std::vector<std::string> findings;
        std::vector<std::string> answers;
    };
    struct Job {
        std::string id;
        std::string name;
        std::string time;
        std::string state;
        unsigned pages = 0;
        unsigned printed = 0;
        std::map<unsigned, std::string> files;  ///< of the pages
        std::shared_ptr<Stream> stream;         ///< null until it is known
    };
    struct Fields;

    void Keep(std::string_view line);
    void TakePrinter(Fields const& fields);
    void TakeState(Fields const& fields);
    void TakeFinding(Fields const& fields, std::string_view line);
    void TakeAnswer(Fields const& fields);
    void TakeStream(Fields const& fields);
    void TakeJob(Fields const& fields);
    void TakePage(Fields const& fields);
    void TakeDone(Fields const& fields);
    Job* Find(std::string const& id);
    Job const* Find(std::string const& id) const { return const_cast<PrinterState*>(this)->Find(id); }
    void Join(Job& job, std::uint32_t packet);
    std::shared_ptr<Stream> StreamWith(std::uint32_t packet);
    static void WriteJob(JsonWriter& writer, Job const& job);

    mutable std::mutex mutex_;
    std::optional<Printer> printer_;
    std::string speed_;
    std::string tag_;
    std::vector<std::string> words_;
    bool isPaused_ = false;
    std::string printing_;  ///< the job, or empty
    std::deque<Job> jobs_;  ///< the newest last
    std::deque<std::shared_ptr<Stream>> streams_;
    std::size_t streamBytes_ = 0;
    std::deque<Event> events_;
    std::size_t eventBytes_ = 0;
    std::uint64_t lastEvent_ = 0;
};
