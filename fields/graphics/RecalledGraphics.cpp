#include "fields/graphics/RecalledGraphics.h"

#include <atomic>
#include <map>
#include <mutex>

#include "fields/graphics/StoredGraphics.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

/// What formats keep of stored pictures all together, in bytes. Past it a picture is read anew for every page.
constexpr std::size_t MostKeptBytes = 256UL * 1024 * 1024;

/// Lets formats that recall one version of a picture share it.
class KeptPictures {
public:
    static KeptPictures& Process() {
        static KeptPictures kept;
        return kept;
    }

    /// `picture`, or the equal one that is kept already under that name; null if all together would be too large.
    std::shared_ptr<Picture const> Keep(std::string const& name, Picture picture) {
        std::lock_guard const lock(mutex_);
        std::erase_if(newest_, [](auto const& entry) { return entry.second.expired(); });
        auto& newest = newest_[name];
        if (auto const kept = newest.lock(); kept && *kept == picture) return kept;
        std::size_t const size = picture.rows.size();
        if (bytes_ + size > MostKeptBytes) return nullptr;
        bytes_ += size;
        std::shared_ptr<Picture const> const kept(new Picture(std::move(picture)), [this, size](Picture const* old) {
            delete old;
            bytes_ -= size;
        });
        newest = kept;
        return kept;
    }

private:
    std::mutex mutex_;
    std::map<std::string, std::weak_ptr<Picture const>> newest_;
    std::atomic<std::size_t> bytes_ = 0;  // pictures go at any time
};

std::shared_ptr<Picture const> Recall(ContextProcessor const& processor, std::string const& text) {
    auto const& memory = processor.at(ZplContextKeys::SharedFormatMemory);
    auto* const recalled = memory ? &memory->pictures : nullptr;
    if (recalled) {
        if (auto const found = recalled->find(text); found != recalled->end()) return found->second;
    }
    auto picture = FindGraphic(processor.FormatsFolder(), text);
    if (!recalled) return picture ? std::make_shared<Picture const>(std::move(*picture)) : nullptr;
    if (!picture) return recalled->emplace(text, nullptr).first->second;

    if (auto const kept = KeptPictures::Process().Keep(text, *picture))
        return recalled->emplace(text, kept).first->second;
    memory->readsStore = true;
    return std::make_shared<Picture const>(std::move(*picture));
}

}  // namespace

std::shared_ptr<Picture const> RecallGraphic(ContextProcessor const& processor, std::string const& text) {
    auto picture = Recall(processor, text);
    if (!picture) Log::Report(LogTopic::File, "no picture is stored under the name " + Quoted(text));
    return picture;
}

}  // namespace ZplCore
