#include "fields/text/TextHandlers.h"

#include "fields/placement/UnitConversion.h"
#include "fields/text/Fonts.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ZplParse.h"

namespace {

using ZplContextKeys::FontChoice;

constexpr std::string_view FontLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

ZplParseResult<unsigned> ParseSize(ZplCommand const& command, std::size_t index, ContextProcessor const& processor) {
    return ZplParse<double>(command, index).Map(ZplCore::ToDots(processor));
}

void StoreOrientationAndSize(Context& current, ZplCommand const& command, ContextProcessor& processor) {
    if (auto const orientation = ZplParse<ZplOrientation>(command, 0))
        processor.set(current, ZplContextKeys::FieldOrientation, *orientation);
    auto const [height, width] =
        ZplCore::GetFontBoundary(processor, ParseSize(command, 1, processor), ParseSize(command, 2, processor));
    processor.set(current, ZplContextKeys::FontHeight, height);
    processor.set(current, ZplContextKeys::FontWidth, width);
}

/// A font letter in upper case.
ZplParseResult<char> ParseFontLetter(ZplCommand const& command, std::size_t index) {
    return ZplParse<char>(command, index).Map([](char c) { return ToAsciiUpper(c); }).Where([](char c) {
        return ZplCore::ToBuiltInFont(c).has_value();
    });
}

/// `^A` with a font letter right behind it: font, orientation and size of this field. One handler for each letter.
class FontHandler : public CommandHandler {
public:
    explicit FontHandler(char letter) : letter_(letter) {}
    std::uint64_t GetCommandId() const override { return CommandId("A") << 8 | static_cast<std::uint8_t>(letter_); }
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const named = command.command.size() > 1 ? ZplCore::ToBuiltInFont(command.command[1]) : std::nullopt;
        auto const font = named.value_or(ZplCore::BuiltInFont{processor.at(ZplContextKeys::DefaultFont)});
        processor.set(current, ZplContextKeys::FontIdentifier, FontChoice(font));
        StoreOrientationAndSize(current, command, processor);
        return true;
    }

private:
    char letter_;
};

/// `^A@`: as `^A`, with a font by its object name; without one, the font that was named last.
class UserFontHandler : public HandlerFor<CommandId("A@")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreOrientationAndSize(current, command, processor);
        // A name lasts: fields behind it leave theirs out.
        if (std::string const& name = command.Parameter(3); !name.empty())
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::UserFont,
                          ZplCore::UserFont{ZplCore::ToFontName(name)});
        if (auto const& font = processor.at(ZplContextKeys::UserFont); !font.name.empty())
            processor.set(current, ZplContextKeys::FontIdentifier, FontChoice(font));
        return true;
    }
};

/// `^CF`: font and size of all fields that name none themselves.
class ChangeDefaultFontHandler : public HandlerFor<CommandId("CF")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const letter = ParseFontLetter(command, 0))
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::DefaultFont, *letter);
        auto const isGiven = [](unsigned dots) { return dots != 0; };
        if (auto const height = ParseSize(command, 1, processor).Where(isGiven))
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::FontHeight, *height);
        if (auto const width = ParseSize(command, 2, processor).Where(isGiven))
            processor.set(ContextProcessor::SystemContext, ZplContextKeys::FontWidth, *width);
        return true;
    }
};

/// `^CW`: puts a font by its object name behind a font letter.
class FontIdentifierHandler : public HandlerFor<CommandId("CW")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto const letter = ParseFontLetter(command, 0);
        std::string const& name = command.Parameter(1);
        constexpr std::size_t LongestFileName = 255;
        if (!letter || ZplCore::ToFontName(name).empty() || name.size() > LongestFileName) return true;
        auto substitutes = processor.at(ZplContextKeys::FontSubstitute);
        substitutes[*letter] = name;
        processor.set(ContextProcessor::SystemContext, ZplContextKeys::FontSubstitute, std::move(substitutes));
        return true;
    }
};

}  // namespace

void AddFontHandlers(CommandHandlerPool& pool) {
    for (char const letter : FontLetters) pool.AddToCache<FontHandler>(letter);
    pool.AddToCache<UserFontHandler>();
    pool.AddToCache<ChangeDefaultFontHandler>();
    pool.AddToCache<FontIdentifierHandler>();
}
