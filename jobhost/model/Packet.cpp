#include "jobhost/model/Packet.h"

#include <rapidjson/document.h>

#include "foundation/Base64.h"
#include "foundation/DebugZones.h"
#include "foundation/Json.h"

namespace Zpl::Host {

namespace {

std::optional<std::uint8_t> LowByte(rapidjson::Document const& header, char const* name) {
    auto const member = header.FindMember(name);
    if (member == header.MemberEnd() || !member->value.IsNumber()) return std::nullopt;
    auto const& value = member->value;
    if (value.IsUint64()) return static_cast<std::uint8_t>(value.GetUint64());
    if (value.IsInt64()) return static_cast<std::uint8_t>(value.GetInt64());
    // A fraction is cut off. What no 64-bit number can hold has no low bits to keep.
    constexpr double Limit = 9.2e18;
    double const number = value.GetDouble();
    if (!(number > -Limit && number < Limit)) return std::nullopt;
    return static_cast<std::uint8_t>(static_cast<std::int64_t>(number));
}

std::uint32_t NumberIn(rapidjson::Document const& header) {
    auto const member = header.FindMember("Number");
    return member != header.MemberEnd() && member->value.IsUint() ? member->value.GetUint() : 0;
}

}  // namespace

std::optional<Packet> Packet::Parse(std::string const& text) {
    if (text.size() % 4 != 0) DebugLog(Warning, "Input data size is not a multiple of 4");
    auto const bytes = Base64::Decode(text);
    if (!bytes) return std::nullopt;
    auto const brace = bytes->find('}');
    if (brace == std::string::npos) return std::nullopt;

    rapidjson::Document header;
    // Iterative, as ever with what comes from elsewhere. Of its texts nothing is kept, so they may be of any bytes.
    header.Parse<rapidjson::kParseIterativeFlag>(bytes->data(), brace + 1);
    if (header.HasParseError() || !header.IsObject()) return std::nullopt;
    auto const session = LowByte(header, "SessionId");
    auto const command = LowByte(header, "Command");
    if (!session || !command) return std::nullopt;
    return Packet{*session, *command, bytes->substr(brace + 1), NumberIn(header)};
}

std::string Packet::Text() const {
    JsonWriter header;
    header.StartObject().Key("SessionId").Int(SessionId).Key("Command").Int(Command);
    if (Number != 0) header.Key("Number").Int(Number);
    return Base64::Encode(header.EndObject().Text() + payload);
}

}  // namespace Zpl::Host
