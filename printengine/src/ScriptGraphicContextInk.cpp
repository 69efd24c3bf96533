#include <algorithm>
#include <cstdint>

#include "printengine/src/ScriptGraphicContextState.h"

namespace Scripting {

using PrintEngine::Pages::PageComposer;
using PrintEngine::Pages::PageLayout;

void ScriptGraphicContext::StartField() { state_->ink.emplace(); }

FieldInk ScriptGraphicContext::EndField() {
    FieldInk const ink = state_->ink.value_or(FieldInk());
    state_->ink.reset();
    return ink;
}

PixelBox ScriptGraphicContext::OnPage(PixelBox const& drawn) const {
    PageLayout const& page = state_->layout;
    auto const enlarged = [&page](int pixels) {
        constexpr std::int64_t Farthest = std::int64_t{1} << 29;
        return static_cast<int>(std::clamp(std::int64_t{pixels} * page.enlargement, -Farthest, Farthest));
    };
    PixelBox box{enlarged(drawn.left), enlarged(drawn.top), enlarged(drawn.right), enlarged(drawn.bottom)};
    if (page.mirrored != page.turned) box = {page.width - box.right, box.top, page.width - box.left, box.bottom};
    if (page.turned) box = {box.left, page.height - box.bottom, box.right, page.height - box.top};
    return {box.left, box.top + page.shiftDown, box.right, box.bottom + page.shiftDown};
}

PixelBox ScriptGraphicContext::PrintArea() const {
    PageLayout const& page = state_->layout;
    // What is moved off one end of the page leaves a white edge at the other.
    return {0, std::max(0, page.shiftDown), page.width, std::min(page.height, page.height + page.shiftDown)};
}

double ScriptGraphicContext::PixelsPerDot() const { return state_->Scale().Factor() * state_->layout.enlargement; }

bool ScriptGraphicContext::IsPageBlank() const {
    PageLayout const& page = state_->layout;
    std::vector<std::uint8_t> row(PrintEngine::Pages::PackedRowBytes(page.width));
    PageComposer composer(state_->raster, page, true);
    for (int y = 0; y < page.height; ++y) {
        composer.Write(y, row.data());
        if (std::any_of(row.begin(), row.end(), [](std::uint8_t byte) { return byte != 0; })) return false;
    }
    return true;
}

}  // namespace Scripting
