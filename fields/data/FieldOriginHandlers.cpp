#include "fields/data/FieldDataHandlers.h"

#include "fields/data/FieldElement.h"
#include "fields/placement/UnitConversion.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"

namespace {

ZplParseResult<unsigned> ParseCoordinate(ZplCommand const& command, std::size_t index,
                                         ContextProcessor const& processor) {
    return ZplParse<double>(command, index).Map(ZplCore::ToDotsScaled(processor));
}

void StoreJustification(Context& current, ZplCommand const& command, std::size_t index, ContextProcessor& processor) {
    if (auto const justification = ZplParse<Justification>(command, index))
        processor.set(current, ZplContextKeys::FieldJustification, *justification);
}

void StoreTypesetCoordinate(Context& current, ZplParseResult<unsigned> const& value, ContextKey<unsigned> const& origin,
                            ContextKey<unsigned> const& next, ContextProcessor& processor) {
    if (value) processor.set(ContextProcessor::FormatContext, next, *value);
    processor.set(current, origin, value.ValueOr(processor.at(next)));
}

/// `^FO`: the origin is the top corner of the field.
class FieldOriginHandler : public HandlerFor<CommandId("FO")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        ZplCore::EndWholeField(current, processor);
        processor.set(ContextProcessor::FormatContext, ZplContextKeys::FieldBaseline, Baseline::Top);
        processor.set(current, ZplContextKeys::FieldOriginX,
                      ParseCoordinate(command, 0, processor).ValueOr(ZplContextDefaults::FieldOriginX));
        processor.set(current, ZplContextKeys::FieldOriginY,
                      ParseCoordinate(command, 1, processor).ValueOr(ZplContextDefaults::FieldOriginY));
        StoreJustification(current, command, 2, processor);
        return true;
    }
};

/// `^FP`: direction of the text, and the space between its characters in dots.
class FieldParameterHandler : public HandlerFor<CommandId("FP")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr int Limit = 9999;
        if (auto const direction = ZplParse<Direction>(command, 0))
            processor.set(current, ZplContextKeys::TextDirection, *direction);
        auto const spacing = OnlyWithin(command, 1, ZplParse<int>(command, 1), {-Limit, Limit});
        if (!spacing) return true;
        // Characters that stand above each other cannot be drawn together.
        bool const vertical = processor.at(ZplContextKeys::TextDirection) == Direction::Vertical;
        processor.set(current, ZplContextKeys::TextSpacing, vertical && *spacing < 0 ? 0 : *spacing);
        return true;
    }
};

/// `^FR`: this field is exclusive-ored with what lies beneath.
class FieldReversePrintHandler : public HandlerFor<CommandId("FR")> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        processor.set(ContextProcessor::ElementContext, ZplContextKeys::LabelReversePrint, true);
        return true;
    }
};

/// `^FT`: the origin lies on the base of the field; what is left out continues where the last field ended.
class FieldTypesetHandler : public HandlerFor<CommandId("FT")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        ZplCore::EndWholeField(current, processor);
        processor.set(ContextProcessor::FormatContext, ZplContextKeys::FieldBaseline, Baseline::Bottom);
        StoreTypesetCoordinate(current, ParseCoordinate(command, 0, processor), ZplContextKeys::FieldOriginX,
                               ZplContextKeys::NextFieldOriginX, processor);
        StoreTypesetCoordinate(current, ParseCoordinate(command, 1, processor), ZplContextKeys::FieldOriginY,
                               ZplContextKeys::NextFieldOriginY, processor);
        StoreJustification(current, command, 2, processor);
        return true;
    }
};

/// `^FW`: orientation and justification of this field and of all that name none themselves.
class FieldOrientationHandler : public HandlerFor<CommandId("FW")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        // The system context first, so that the setting outlives the field that it is sent with.
        if (auto const orientation = ZplParse<ZplOrientation>(command, 0)) {
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::FieldOrientation, *orientation);
            processor.set(current, ZplContextKeys::FieldOrientation, *orientation);
        }
        if (auto const justification = ZplParse<Justification>(command, 1)) {
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::FieldJustification, *justification);
            processor.set(current, ZplContextKeys::FieldJustification, *justification);
        }
        return true;
    }
};

}  // namespace

void AddFieldOriginHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<FieldOriginHandler>();
    pool.AddToCache<FieldParameterHandler>();
    pool.AddToCache<FieldReversePrintHandler>();
    pool.AddToCache<FieldTypesetHandler>();
    pool.AddToCache<FieldOrientationHandler>();
}
