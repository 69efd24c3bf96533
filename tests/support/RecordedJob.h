#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Scripting/ScriptGraphicContext.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/processor/CreateHandlers.h"
#include "labels/Job.h"
#include "tests/support/FakePrinterContext.h"
#include "tests/support/TemporaryDirectory.h"

/// Jobs whose calls are written down: "start NAME", "render 3", "end", "close", "page N" and "format N" for the answers
/// of label N. Each job has a folder, in which pages are empty files.
class RecordedJobs {
public:
    struct Format {
        unsigned quantity;
        bool pauseAfter = false;
        bool readsTag = false;
    };

    Zpl::Job Make(std::vector<Format> const& formats) {
        std::vector<Zpl::Label> labels;
        for (auto const& format : formats) labels.push_back(MakeLabel(format, labels.size()));
        return {std::move(labels), [this] { calls.emplace_back("close"); }, false};
    }

    /// The calls since it was last asked, with blanks between.
    std::string Calls() {
        std::string text;
        for (auto const& call : calls) text += (text.empty() ? "" : " ") + call;
        calls.clear();
        return text;
    }

    /// The names in a job folder, sorted as numbers, then as texts.
    static std::string Files(std::filesystem::path const& job) {
        std::set<std::pair<std::size_t, std::string>> names;
        std::error_code error;
        for (auto const& entry : std::filesystem::directory_iterator(job, error)) {
            std::string const name = entry.path().filename().string();
            names.emplace(name.size(), name);
        }
        std::string text;
        for (auto const& [size, name] : names) text += (text.empty() ? "" : " ") + name;
        return text;
    }

    std::vector<std::string> calls;
    TemporaryDirectory folder;
    bool makesFolders = true;
    std::function<void(unsigned page)> onRender;

private:
    class Target : public Scripting::ScriptGraphicContext {
    public:
        Target(RecordedJobs& record, std::shared_ptr<Scripting::PrinterContextInterface> printer)
            : ScriptGraphicContext(record.fonts_, std::move(printer)), record_(record) {}

        std::string StartJob(std::string_view name, unsigned, std::vector<unsigned> const&, bool,
                             std::vector<PageRangeRfidOperations> const&, std::optional<int>, bool) override {
            record_.calls.push_back("start:" + std::string(name));
            if (!record_.makesFolders) return {};
            auto const path = record_.folder / ("job" + std::to_string(record_.serial_++));
            std::filesystem::create_directory(path);
            std::ofstream(path / "MetaData");
            return path.string();
        }
        void EndJob(std::filesystem::path const& path) override {
            record_.calls.emplace_back("end");
            std::ofstream(path / "TransferDone");
        }
        void RenderPage(std::filesystem::path const& path, unsigned page, bool isLast) override {
            if (record_.onRender) record_.onRender(page);
            record_.calls.push_back(std::to_string(page) + (isLast ? "!" : ""));
            std::ofstream(path / std::to_string(page));
        }

    private:
        RecordedJobs& record_;
    };

    class Printer : public FakePrinterContext {
    public:
        explicit Printer(RecordedJobs& record) : FakePrinterContext(203), record_(record) {}
        void SendToHost(std::string_view data) override { record_.calls.emplace_back(data); }
        void Reset() override { record_.calls.emplace_back("reset"); }

    private:
        RecordedJobs& record_;
    };

    Zpl::Label MakeLabel(Format const& format, std::size_t number) {
        static CommandHandlerPool const pool = CreateHandlers(false, false);
        using namespace ZplContextKeys;
        ContextProcessor processor("");
        processor.SetSystemContext(std::make_shared<Context>(ContextProcessor::SystemContext));
        processor.CreateContext(ContextProcessor::FormatContext);
        processor.SetGraphicContext(target_);
        processor.SetPrinterContext(printer_);
        auto const set = [&](auto const& key, auto value) {
            processor.set(ContextProcessor::FormatContext, key, std::move(value));
        };
        set(PrintQuantity, format.quantity);
        set(PauseAfterJob, format.pauseAfter);
        auto const answer = [number](char const* kind) {
            return ResponseCallback(
                [text = kind + std::to_string(number)](ContextProcessor const&) { return std::optional(text); });
        };
        set(ReportRfidEncodingCallback, answer("page:"));
        set(ReturnRfidLogCallback, answer("format:"));
        Zpl::Label label(std::move(processor), pool);
        if (format.readsTag) label.SetRfidOperations({{RfidOperation::Read, {}}});
        return label;
    }

    unsigned serial_ = 0;
    PrintEngine::Printing::TrueTypeCacheCreator fonts_;
    std::shared_ptr<Printer> printer_ = std::make_shared<Printer>(*this);
    std::shared_ptr<Target> target_ = std::make_shared<Target>(*this, printer_);
};
