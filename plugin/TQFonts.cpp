#include "plugin/TQFonts.h"

#include "plugin/FontsInterface.h"

void TQFonts::ConnectModel(std::shared_ptr<TQFonts> const& self, std::shared_ptr<FontsInterface> model) {
    self->model_ = std::move(model);
}
