#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Scripting/ScriptGraphicContext.h"
#include "printengine/src/fonts/FontCache.h"
#include "printengine/src/page/PageDeflater.h"
#include "printengine/src/page/PageLayout.h"
#include "printengine/src/raster/PixelScale.h"
#include "printengine/src/raster/Raster.h"
#include "printengine/src/raster/Shapes.h"
#include "printengine/src/text/TextPainter.h"

namespace Scripting {

/// Everything that a drawing target remembers between calls.
struct ScriptGraphicContext::State {
    State(PrintEngine::Printing::TrueTypeCacheCreator::Cache& fontCache,
          std::shared_ptr<PrinterContextInterface> printer)
        : fonts(fontCache), printerContext(std::move(printer)) {}

    PrintEngine::Drawing::PixelScale Scale() const {
        return {printerContext->PrinterDpi().Value(), printerContext->DesignDpi().Value()};
    }
    PrintEngine::Drawing::Ink Ink() const {
        using enum PrintEngine::Drawing::Ink;
        return reverse ? Invert : color == 1 ? White : Black;
    }
    /// A box of dots, given by its corners on the label, in pixels of the page.
    PrintEngine::Drawing::PixelBox PixelBoxOf(std::int64_t left, std::int64_t top, std::int64_t right,
                                              std::int64_t bottom) const;
    /// The size of a page in pixels: `width` and `length` are dots, 0 for those of the label part.
    Extent PixelsOf(unsigned width, unsigned length) const;
    /// Where the ink of a drawing call of that kind is counted; null where nobody asks for it.
    PixelBox* Counted(PixelBox FieldInk::*kind) {
        if (!ink) return nullptr;
        bool const isWhite = color == 1 && !reverse;
        return isWhite ? &ink->white : &((*ink).*kind);
    }
    /// Counts the line that a text of `width` dots stands on: dots (u, v) of its frame.
    void CountBaseline(PrintEngine::Text::TextFrame const& frame, std::int64_t width, std::int64_t v);
    /// Counts the box of a shape, and gives it back.
    PixelBox CountShape(PixelBox const& box) {
        if (PixelBox* const counted = Counted(&FieldInk::shape)) counted->Add(box);
        return box;
    }
    /// Counts the ink of a picture that is drawn as `width` x `height` pixels, turned, at (left, top).
    void CountImage(PrintEngine::Drawing::BitRows const& picture, int left, int top, int width, int height);
    /// Keeps a picture whose ink, turned, lies in `ink` of its box, and whose box begins at (left, top).
    void KeepPicture(PrintEngine::Drawing::BitRows const& picture, PixelBox const& ink, int left, int top);
    /// Takes note that something is drawn, and of the first text.
    void NoteContent(std::string_view text = {});
    /// Where a form of the page is put, with what was asked for before. That of an extraordinarily large page is not
    /// kept.
    std::string& PageForm() {
        constexpr std::size_t KeptBytes = std::size_t{4} << 20;
        if (pageForm.capacity() > KeptBytes) std::string().swap(pageForm);
        return pageForm;
    }
    std::string& EmptyPageForm() {
        PageForm().clear();
        return pageForm;
    }
    /// Counts the work for something of so many pixels and characters. False, told once a label, if the label has drawn
    /// so much that it is left out: drawing costs what it covers, and a few bytes can cover all of the largest page.
    bool Spend(std::int64_t width, std::int64_t height, std::size_t characters = 0);
    /// Draws by `draw(raster)`: on the page, and where constant fields are kept apart also there.
    template <typename Draw>
    void OnRasters(Draw draw) {
        draw(raster);
        if (constantFields && !variable) draw(*constantFields);
    }
    /// Draws texts by `paint(painter)`, so that overlapping characters are inverted once.
    template <typename Paint>
    void PaintText(Paint paint);

    PrintEngine::Printing::TrueTypeCacheCreator::Cache& fonts;
    std::shared_ptr<PrinterContextInterface> printerContext;
    PrintEngine::PartManagement::LabelPart part;
    std::filesystem::path jobsFolder;

    PrintEngine::Drawing::Raster raster;
    PrintEngine::Drawing::Raster scratch;  ///< where text is put together before it inverts what lies beneath
    std::unique_ptr<PrintEngine::Drawing::Raster> storedPicture;  ///< null when the next label starts empty
    unsigned storedGeneration = 0;                                ///< of the labels that the stored picture is for

    /// The page without its variable fields; null while it has none.
    std::unique_ptr<PrintEngine::Drawing::Raster> constantFields;
    bool variable = false;

    PrintEngine::Pages::PageDeflater pageDeflater;
    PrintEngine::Pages::PageLayout layout;
    Extent drawnSize{1, 1};    ///< of the page before it is enlarged, in pixels
    std::uint64_t labels = 0;  ///< that were started
    bool keepsNotes = false;
    std::string note;         ///< that the file of the page under way carries
    bool holdsLabel = false;  ///< drawn, and no page yet
    bool keepsPicture = false;
    Extent pageSize;
    bool keepsPages = false;  ///< to be handed out, in place of writing their files
    std::string pageForm;     ///< of the page that was rendered last, as it was asked for last
    std::string fileError;
    std::string toldReason;  // why the last page could not be written; empty if it could

    std::optional<FieldInk> ink;  ///< of the field under way, while its ink is counted
    bool keepsPictures = false;   ///< of that field
    std::vector<PixelRows> pictures;
    std::size_t pictureWords = 0;  ///< of all that were kept of the label
    std::int64_t originX = 0;
    std::int64_t originY = 0;
    bool hasContent = false;
    std::int64_t spent = 0;  ///< pixels that the label has covered, and what counts as such
    std::string labelText;

    int degrees = 0;
    bool reverse = false;
    unsigned color = 0;
    std::string font = "A";
    PrintEngine::Text::TextStyle textStyle;
    PrintEngine::Text::TextLayout textLayout;
};

}  // namespace Scripting
