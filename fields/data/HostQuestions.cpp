#include "fields/data/HostQuestions.h"

#include "foundation/Log.h"

namespace ZplCore {

void AddHostQuestion(ContextProcessor& processor, ContextKey<std::vector<ZplContextKeys::ResponseCallback>> const& key,
                     ZplContextKeys::ResponseCallback answer) {
    constexpr std::size_t MostQuestions = 1000;
    Context* const label = processor.GetContext(ContextProcessor::LabelContext);
    if (!label) return;
    auto& callbacks = (*label)[key];
    if (callbacks.size() < MostQuestions) {
        callbacks.push_back(std::move(answer));
    } else if (callbacks.size() == MostQuestions) {
        callbacks.emplace_back();  // asks nothing, and is told of once
        Log::Report(LogTopic::Limit, "a format asks more than " + std::to_string(MostQuestions) +
                                         " questions; the rest is not answered");
    }
}

}  // namespace ZplCore
