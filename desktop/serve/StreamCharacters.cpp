#include "desktop/serve/StreamCharacters.h"

#include "propertybus/PropertyIdentifiers.h"

namespace {

/// A character as people can read it, whatever byte it is.
std::string Shown(std::string const& character) {
    if (character.size() == 1 && character[0] > ' ' && character[0] <= '~') return character;
    std::string shown = "0x";
    for (char const byte : character) {
        for (int const digit : {byte >> 4 & 15, byte & 15}) shown += "0123456789ABCDEF"[digit];
    }
    return shown;
}

}  // namespace

StreamCharacters::StreamCharacters(PublishingPropertyManager& properties, QObject& receiver, Say const& say) {
    auto const follow = [&](char const* property, char const* usual, char const* name) {
        auto followed = properties.Follow<StringProperty>(ComponentIdentifiers::ZplHost, ExternalAppRegistration::Plain,
                                                          {property, property, PropertyGroups::PrintOperations}, usual);
        auto const tell = [say, usual, name](std::string const& value) {
            if (!value.empty() && value != usual)
                say(std::string("the ") + name + " is " + Shown(value) + ", not " + usual);
        };
        followed->AddCallback([&receiver, tell](std::shared_ptr<Property> const& changed) {
            QMetaObject::invokeMethod(
                &receiver, [tell, value = changed->ValueText()] { tell(value); }, Qt::QueuedConnection);
        });
        return followed;
    };
    formatPrefix_ = follow(PropertyNames::ZPLFormatCharacter, "^", "format prefix");
    controlPrefix_ = follow(PropertyNames::ZPLControlCharacter, "~", "control prefix");
    delimiter_ = follow(PropertyNames::ZPLDelimiterCharacter, ",", "delimiter");
}

StreamState StreamCharacters::State(Encoding encoding) const {
    auto const character = [](StringProperty const& property, char fallback) {
        std::string const value = property.Get();
        return value.empty() ? fallback : value[0];
    };
    return {character(*formatPrefix_, '^'), character(*controlPrefix_, '~'), character(*delimiter_, ','), encoding};
}

std::string StreamCharacters::Prefixes() const {
    return Shown(formatPrefix_->Get()) + " and " + Shown(controlPrefix_->Get());
}
