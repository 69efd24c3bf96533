#include "fields/graphics/StoredGraphics.h"

#include <string>

#include "foundation/Base64.h"
#include "foundation/Files.h"
#include "foundation/Log.h"
#include "frontend/context/ObjectStore.h"

namespace ZplCore {

namespace {

constexpr std::size_t HeaderSize = GraphicSignature.size() + 8;
constexpr std::string_view SearchOrder = "REBAZ";  // devices, where a name has none
constexpr std::string_view DefaultName = "UNKNOWN";
constexpr std::string_view DefaultExtension = "GRF";

void AppendNumber(std::string& bytes, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

std::uint32_t ReadNumber(std::string_view bytes) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<std::uint8_t>(bytes[i]);
    return number;
}

std::string Serialize(Picture const& picture) {
    std::string bytes(GraphicSignature);
    bytes.reserve(HeaderSize + picture.rows.size());
    AppendNumber(bytes, picture.bytesPerRow);
    AppendNumber(bytes, picture.rowCount);
    bytes.append(picture.rows.begin(), picture.rows.end());
    return bytes;
}

std::optional<Picture> Deserialize(std::string_view bytes) {
    if (bytes.size() < HeaderSize || !bytes.starts_with(GraphicSignature)) return std::nullopt;
    Picture picture;
    picture.bytesPerRow = ReadNumber(bytes.substr(GraphicSignature.size()));
    picture.rowCount = ReadNumber(bytes.substr(GraphicSignature.size() + 4));
    bytes.remove_prefix(HeaderSize);
    std::size_t const whole = std::size_t{picture.bytesPerRow} * picture.rowCount;
    if (picture.bytesPerRow == 0 || picture.bytesPerRow > Picture::MaximumBytesPerRow ||
        whole > Picture::MaximumBytes || bytes.size() > whole || bytes.size() % picture.bytesPerRow != 0)
        return std::nullopt;
    picture.rows.assign(bytes.begin(), bytes.end());
    return picture;
}

}  // namespace

bool StoreGraphic(std::filesystem::path const& folder, ObjectName const& name, Picture const& picture) {
    return StoreObject(folder, name, Serialize(picture));
}

std::optional<Picture> LoadGraphic(std::filesystem::path const& folder, ObjectName const& name) {
    std::string const bytes = ReadRegularFile(ObjectFile(folder, name.Path()));
    if (bytes.empty()) return std::nullopt;
    auto picture = Deserialize(bytes);
    if (!picture) Log::Report(LogTopic::File, "object " + name.Text() + " is no stored picture");
    return picture;
}

std::optional<Picture> FindGraphic(std::filesystem::path const& folder, std::string_view text) {
    for (char const device : SearchOrder) {
        auto const name = ObjectName::Parse(text, device, DefaultName, DefaultExtension);
        if (!name) return std::nullopt;
        if (auto picture = LoadGraphic(folder, *name)) return picture;
        if (ObjectName::NamesDevice(text)) return std::nullopt;
    }
    return std::nullopt;
}

std::string DownloadCommand(ObjectName const& name, Picture const& picture) {
    std::size_t const total = std::size_t{picture.bytesPerRow} * picture.rowCount;
    std::string bytes(picture.rows.begin(), picture.rows.end());
    bytes.resize(total);
    std::string const text = Base64::Encode(bytes);
    std::string command;
    command.reserve(DownloadSize(picture));
    command += "~DG" + name.Text() + "," + std::to_string(total) + "," + std::to_string(picture.bytesPerRow) + ",:B64:";
    command += text;
    command += ":" + CrcDigits(Crc16(text)) + "\r\n";
    return command;
}

std::size_t DownloadSize(Picture const& picture) {
    constexpr std::size_t Frame = 100;  // more than the command around the data takes
    return (std::size_t{picture.bytesPerRow} * picture.rowCount + 2) / 3 * 4 + Frame;
}

}  // namespace ZplCore
