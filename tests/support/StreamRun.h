#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "jobhost/model/PrintStream.h"
#include "library/Desk.h"

/// What a stream makes of itself on a desk, in a form that tests compare.
struct StreamRun {
    struct Page {
        std::string text;
        unsigned copies;
        unsigned width;  ///< pixels
        unsigned height;
        std::vector<std::uint8_t> rows;

        friend bool operator==(Page const&, Page const&) = default;
    };

    std::vector<Page> labels;
    std::string missing;  ///< the unknown commands
    bool endsInFormat = false;

    friend bool operator==(StreamRun const&, StreamRun const&) = default;
};

/// Called for each label when it is finished.
using TakeLabel = std::function<void(Zpl::Label& label, Scripting::ScriptGraphicContext& target)>;

/// Runs the chunks as one stream; each label's picture is that of its first copy.
inline StreamRun RunStream(Desk& desk, std::vector<std::string_view> const& chunks, TakeLabel const& take = {}) {
    StreamRun run;
    desk.StartStream();
    desk.Model().GetMissingZplCommandsProperty()->Set("");
    Zpl::Host::PrintStream stream([&desk] { return desk.MakeSession(); });
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        for (std::string_view rest = chunks[i]; !rest.empty();) {
            auto result = stream.Consume(rest, false, i + 1 == chunks.size());
            rest = result.remaining;
            if (!result.label) continue;
            auto& [text, label] = *result.label;
            StreamRun::Page page{text, label.Quantity(), 0, 0, {}};
            // The replay that made the label has just left its picture on the drawing target.
            page.rows = stream.Current().Target().GetPageBitmap(page.width, page.height);
            run.labels.push_back(std::move(page));
            if (take) take(label, stream.Current().Target());
        }
    }
    run.missing = desk.Model().GetMissingZplCommandsProperty()->Get();
    run.endsInFormat = stream.Current().IsInFormat();
    return run;
}

inline StreamRun RunStream(Desk& desk, std::string_view stream, TakeLabel const& take = {}) {
    return RunStream(desk, std::vector{stream}, take);
}

/// What the labels say, in their order.
inline std::vector<std::string> Texts(StreamRun const& run) {
    std::vector<std::string> texts;
    for (auto const& label : run.labels) texts.push_back(label.text);
    return texts;
}
