#include "fields/FieldHandlers.h"

#include "fields/data/FieldDataHandlers.h"
#include "fields/data/FieldOriginHandlers.h"
#include "fields/graphics/GraphicHandlers.h"
#include "fields/graphics/StoredGraphicHandlers.h"
#include "fields/text/FontHandlers.h"
#include "fields/text/TextBlockHandlers.h"

void AddFieldHandlers(CommandHandlerPool& pool) {
    AddFieldOriginHandlers(pool);
    AddFieldDataHandlers(pool);
    AddTextBlockHandlers(pool);
    AddFontHandlers(pool);
    AddGraphicHandlers(pool);
    AddStoredGraphicHandlers(pool);
}
