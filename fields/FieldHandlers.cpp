#include "fields/FieldHandlers.h"

#include "fields/GraphicHandlers.h"
#include "fields/StoredGraphicHandlers.h"
#include "fields/data/FieldDataHandlers.h"
#include "fields/data/FieldOriginHandlers.h"
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
