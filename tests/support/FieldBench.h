#pragma once

#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "FakePrinterContext.h"
#include "RecordingGraphicContext.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/processor/CreateHandlers.h"
#include "frontend/stream/ZplTokenizer.h"
#include "tests/support/TemporaryDirectory.h"

/// Runs the commands of a format one after the other against a format's contexts, as a label does when it is drawn, and
/// writes down what is drawn.
class FieldBench {
public:
    explicit FieldBench(unsigned designDpi = 203, unsigned printerDpi = 0)
        : printer(std::make_shared<FakePrinterContext>(printerDpi ? printerDpi : designDpi, designDpi)) {
        processor.SetCurrentLabelNumber(0);  // as for the first copy of a label
        processor.SetSystemContext(std::make_shared<Context>(ContextProcessor::SystemContext));
        processor.SetPrinterContext(printer);
        processor.SetGraphicContext(target);
        for (auto const& name :
             {ContextProcessor::FormatContext, ContextProcessor::LabelContext, ContextProcessor::ElementContext})
            processor.CreateContext(name);
        Log::SetSink([this](LogTopic, std::string_view line) { reports.emplace_back(line); });
    }
    FieldBench(FieldBench const&) = delete;
    FieldBench& operator=(FieldBench const&) = delete;
    ~FieldBench() { Log::SetSink({}); }

    /// Runs `stream`; gives what it drew, a line a call.
    std::string Run(std::string_view stream) {
        ZplTokenizer tokenizer;
        for (std::size_t position = 0; position < stream.size();) {
            auto const command = tokenizer
                                     .TokenizeString(stream, position, printer->FormatPrefix(),
                                                     printer->ControlPrefix(), printer->Delimiter(), true,
                                                     processor.at(ZplContextKeys::CodePageConverter).GetEncoding())
                                     .second;
            if (!command) break;
            if (auto* handler = Handlers().GetCommandHandler(command->command))
                handler->HandleCommand(processor.GetCurrentContext(), *command, processor);
        }
        return target->Take();
    }

    /// Where the next field would start.
    std::string Next() const {
        return std::to_string(static_cast<int>(processor.at(ZplContextKeys::NextFieldOriginX))) + "," +
               std::to_string(static_cast<int>(processor.at(ZplContextKeys::NextFieldOriginY)));
    }

    static CommandHandlerPool const& Handlers() {
        static CommandHandlerPool const pool = CreateHandlers(false, false);
        return pool;
    }

    TemporaryDirectory temporary;
    std::filesystem::path folder = temporary / "objects";
    ContextProcessor processor{folder};
    std::shared_ptr<RecordingGraphicContext> target = std::make_shared<RecordingGraphicContext>();
    std::shared_ptr<FakePrinterContext> printer;
    std::vector<std::string> reports;
};

/// A stream, and the calls on the drawing target that it makes.
struct DrawRow {
    char const* name;
    std::string_view stream;
    std::string_view expected;
};

/// Runs each row on a bench of its own.
inline void ExpectDrawings(std::span<DrawRow const> rows, unsigned designDpi = 203) {
    for (auto const& row : rows) {
        FieldBench bench(designDpi);
        EXPECT_EQ(bench.Run(row.stream), row.expected) << row.name;
    }
}
