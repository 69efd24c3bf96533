#pragma once

#include <functional>
#include <vector>

#include "desktop/web/Router.h"
#include "desktop/web/Sessions.h"
#include "desktop/web/StreamOrder.h"
#include "desktop/web/WorkPool.h"
#include "foundation/MachineSettings.h"

/// The doors at which streams are drawn and checked: each request on a desk of its own, which goes with it.
class DrawingDoors {
public:
    DrawingDoors(MachineSettings machine, unsigned threads);

    std::vector<Door> List();

    /// A stream for a printer of that resolution, and labels of that size.
    struct Label {
        unsigned dpi;
        std::string size;
        std::string stream;
    };
    /// Answers with the picture of the first label, which is drawn with what is stored in the folder, and changes
    /// nothing of it.
    void DrawStored(std::filesystem::path const& objects, Label label, Visit visit);
    /// Answers with what `make` gives on a thread for drawing.
    void Make(Visit const& visit, std::function<HttpAnswer()> make);

private:
    void Render(Visit visit);
    void Check(Visit visit);
    void Labels(Visit visit);
    void LabelsByAddress(Visit visit);
    void DrawLabel(Visit visit, std::string_view place, std::string stream);
    StreamOrder OrderOf(Visit const& visit) const;
    void Draw(StreamOrder order, Visit visit);
    void Start(std::function<void()> work);

    MachineSettings machine_;
    Sessions sessions_;
    WorkPool pool_;
};
