#include "desktop/web/StreamOrder.h"

#include "desktop/web/Refusal.h"
#include "desktop/web/StreamReport.h"
#include "foundation/Base64.h"
#include "library/DrawCopies.h"
#include "library/RowsPage.h"
#include "library/StreamInterpreter.h"

namespace {

using Detail = ZplCore::FieldMap::Detail;

/// One order under way.
class Fulfilment {
public:
    explicit Fulfilment(StreamOrder const& order)
        : order_(order),
          desk_(order.desk),
          findings_(order.stream),
          interpreter_(desk_, order.stream, findings_, order.format ? Detail::Ink : Detail::Everything) {
        if (!order_.format) fieldsJson_.emplace(order_.stream);
        if (order_.format) writer_ = order_.format->makeWriter();
    }

    StreamAnswer Run() {
        interpreter_.Run([this](FinishedLabel& finished) {
            if (StreamOrder::Clock::now() > order_.deadline) throw Refusal(503, TooSlow);
            Take(finished);
            return true;
        });
        if (order_.format) {
            RequirePages();
            answer_.content += writer_->End();
        } else {
            answer_.content = report_.Text(findings_);
        }
        return std::move(answer_);
    }

private:
    static constexpr std::size_t MostAnswer = 64 << 20;  // bytes
    static constexpr char const* TooSlow = "this takes longer to draw than a request may take";

    bool IsWanted(unsigned page) const { return !order_.page || *order_.page == page; }

    void Take(FinishedLabel& finished) {
        answer_.labels = finished.number;
        unsigned const first = answer_.pages + 1;
        unsigned const copies = std::min(finished.label.Quantity(), order_.copies);
        answer_.pages += copies;
        if (!order_.draws) return AddLabel(finished);
        // A picture that a label leaves behind is drawn on by the next one.
        bool const isWanted = !order_.page || (*order_.page >= first && *order_.page <= answer_.pages);
        if (isWanted || finished.label.KeepsPicture()) Draw(finished, copies, first);
    }

    void AddLabel(FinishedLabel const& finished) {
        auto const& map = finished.label.Fields();
        report_.AddLabel(finished, map ? std::optional(fieldsJson_->Of(*map)) : std::nullopt);
    }

    void Draw(FinishedLabel& finished, unsigned copies, unsigned first) {
        auto& target = interpreter_.Target();
        auto* const keeper = Scripting::PageKeeper::Of(&target);
        if (!keeper) throw Refusal(503, "this engine hands out no pages");
        keeper->KeepPages();
        auto task = TaskOf(std::move(finished.label), finished.number, finished.format, desk_.Printer(), copies,
                           fieldsJson_ ? &*fieldsJson_ : nullptr);
        interpreter_.SetDrawnFormat(task.format);
        DrawCopies(
            task, {}, order_.desk.tag, [this](Telling const& telling) { telling(findings_); },
            [&](DrawnCopy copy) {
                if (StreamOrder::Clock::now() > order_.deadline) throw Refusal(503, TooSlow);
                unsigned const page = first + copy.copy;
                if (IsWanted(page)) Keep(*keeper, task, std::move(copy));
                return !order_.page || page < *order_.page;
            });
        interpreter_.SetDrawnFormat({});
    }

    void Keep(Scripting::FinishedPage& page, LabelTask const& task, DrawnCopy copy) {
        if (order_.rotation != 0) {
            auto turned = RowsPage::Turned(page, order_.rotation);
            return KeepTurned(turned, task, std::move(copy));
        }
        KeepTurned(page, task, std::move(copy));
    }

    void KeepTurned(Scripting::FinishedPage& page, LabelTask const& task, DrawnCopy copy) {
        ++kept_;
        if (order_.format) {
            answer_.content += writer_->Add(order_.format->FormOf(page));
        } else {
            auto const picture =
                order_.hasPictures ? "data:image/png;base64," + Base64::Encode(page.PngFile()) : std::string();
            report_.AddPage(ReportOf(task, page.PageSize(), std::move(copy)), picture);
        }
        if (answer_.content.size() + report_.Size() > MostAnswer)
            throw Refusal(413, "the pages take more than 64 MiB; ask for one at a time, by page=N");
    }

    void RequirePages() const {
        if (kept_ > 0) return;
        if (answer_.labels == 0) throw Refusal(404, "the stream holds no printable label");
        auto const count = std::to_string(answer_.pages);
        throw Refusal(
            404, "the stream has " + count + (answer_.pages == 1 ? " page" : " pages") + ", none is the one asked for");
    }

    StreamOrder const& order_;
    Desk desk_;
    Findings findings_;
    StreamInterpreter interpreter_;
    std::optional<FieldsJson> fieldsJson_;
    std::unique_ptr<PageWriter> writer_;
    StreamReport report_;
    StreamAnswer answer_;
    unsigned kept_ = 0;
};

}  // namespace

StreamAnswer Fulfil(StreamOrder const& order) { return Fulfilment(order).Run(); }
