#include "fields/FieldHandlers.h"

#include "fields/data/FieldDataHandlers.h"
#include "fields/graphics/GraphicHandlers.h"
#include "fields/text/TextHandlers.h"

void AddFieldHandlers(CommandHandlerPool& pool) {
    AddFieldDataHandlers(pool);
    AddFieldOriginHandlers(pool);
    AddFontHandlers(pool);
    AddGraphicFieldHandler(pool);
    AddGraphicHandlers(pool);
    AddStoredGraphicHandlers(pool);
    AddTextBlockHandlers(pool);
}
