#pragma once

#include "frontend/context/ContextProcessor.h"

namespace ZplCore::Sketching {

/// Turns the element context of a text field into calls on the drawing target, and stores where the next field starts.
/// Empty text, or no drawing target, draws nothing and leaves the running position where it is.
struct TextElementProcessor {
    /// A plain text field. False if there is nothing to draw.
    static bool ProcessElementContext(Context& element, ContextProcessor& processor);
    /// A field block: its data broken into a number of lines; further lines are drawn over the last one.
    static void ProcessFieldBlock(Context const& element, ContextProcessor& processor);
    /// A text block: its data broken into the lines that fit into `height` dots.
    static void ProcessTextBlock(Context& element, ContextProcessor& processor, unsigned height);

    /// Draws UTF-8 text as a plain text field. False if there is nothing to draw.
    static bool ProcessText(std::string text, ContextProcessor& processor);
};

/// Draws what the element context holds as a plain text field.
void RenderTextElement(ContextProcessor& processor);

}  // namespace ZplCore::Sketching
