#include "jobhost/model/JobStatusPropertyChangeReducer.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// Applies changes written as "s:Printing", "p:/job", "n:4" or "r:E2", and gives the events as "path status page".
std::string Events(std::vector<std::string> const& changes) {
    Zpl::Host::JobStatusPropertyChangeReducer reducer;
    std::string events;
    for (auto const& change : changes) {
        std::string const value = change.substr(2);
        std::optional<Zpl::Host::JobStatusChangedEvent> event;
        if (change[0] == 's') event = reducer.StatusChanged(value);
        if (change[0] == 'p') event = reducer.PathChanged(value);
        if (change[0] == 'n') event = reducer.PageChanged(static_cast<unsigned>(std::stoul(value)));
        if (change[0] == 'r') event = reducer.NewRfidReadResponse({{1, value}});
        if (!event) continue;
        std::ostringstream line;
        line << event->path.string() << ' ' << event->status << ' ' << event->page;
        for (auto const& response : event->responses) line << ' ' << response.data;
        events += (events.empty() ? "" : ", ") + line.str();
    }
    return events;
}

TEST(JobStatusPropertyChangeReducer, MakesEventsOfChanges) {
    struct Row {
        char const* name;
        std::vector<std::string> changes;
        char const* events;
    };
    std::vector<Row> const rows = {
        {"a path alone is no event", {"p:/a"}, ""},
        {"a status waits for its path", {"s:Printing", "p:/a"}, "/a 0 0"},
        {"streaming and printing are one", {"s:Streaming", "p:/a", "s:Printing"}, "/a 0 0"},
        {"each text",
         {"p:/a", "s:Printing", "s:Print Paused", "s:Print Error", "s:"},
         "/a 0 0, /a 1 0, /a 2 0, /a 3 0"},
        {"an unknown text", {"p:/a", "s:printing", "s:Printing"}, "/a 0 0"},
        {"pages", {"s:Printing", "p:/a", "n:1", "n:2"}, "/a 0 0, /a 0 1, /a 0 2"},
        {"page 0 is none, and keeps the page",
         {"s:Printing", "p:/a", "n:3", "n:0", "s:Print Paused"},
         "/a 0 0, /a 0 3, /a 1 3"},
        {"the page of the event remembered", {"n:2", "s:Printing", "p:/a", "n:2", "n:3", "n:2"}, "/a 0 2, /a 0 3"},
        {"no pages while paused", {"s:Print Paused", "p:/a", "n:2", "s:Printing"}, "/a 1 0, /a 0 2"},
        {"done forgets path and page",
         {"s:Printing", "p:/a", "n:2", "s:", "s:Printing", "n:5", "p:/b"},
         "/a 0 0, /a 0 2, /a 3 2, /b 0 5"},
        {"a path under a stored status, also done", {"s:", "p:/a"}, "/a 3 0"},
        {"no path", {"s:Printing", "p:NO PAGE", "n:1"}, " 0 0,  0 1"},
        {"a path taken away before the end tells nobody of the end",
         {"s:Printing", "p:/a", "p:NO PAGE", "s:"},
         "/a 0 0,  0 0"},
        {"a path taken away behind the end",
         {"s:Printing", "p:/a", "s:", "p:NO PAGE", "s:Printing", "p:/b"},
         "/a 0 0, /a 3 0,  3 0, /b 0 0"},
        {"a tag", {"r:E1", "s:Printing", "p:/a", "n:2", "r:E2"}, "/a 0 0, /a 0 2, /a 4 0 E2"},
    };
    for (auto const& row : rows) EXPECT_EQ(Events(row.changes), row.events) << row.name;
}

}  // namespace
