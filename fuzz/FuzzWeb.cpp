#include <stdexcept>
#include <string>
#include <string_view>

#include "desktop/web/FormData.h"
#include "desktop/web/UrlText.h"
#include "fuzz/Fuzz.h"

// What strangers send to the desk in the browser: forms and addresses of any bytes. What a form gives lies in it, a
// part that is put into a form comes out as it was, and so does what is encoded into an address.

namespace {

bool IsWithin(std::string_view part, std::string_view whole) {
    return part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size();
}

void ReadForm(std::string_view type, std::string_view form) {
    try {
        Require(IsWithin(PartOfForm(type, form, "file"), form));
    } catch (std::invalid_argument const&) {
        // Damaged: refused with a sentence.
    }
}

/// Two parts, of which the second is the one that is asked for.
void WriteAndReadForm(std::string_view content, std::string_view other) {
    std::string boundary = "b";
    while (content.find("--" + boundary) != content.npos || other.find("--" + boundary) != other.npos) boundary += "ou";
    constexpr std::size_t LongestBoundary = 70;
    if (boundary.size() > LongestBoundary) return;
    std::string const head = "--" + boundary + "\r\nContent-Disposition: form-data; name=";
    std::string const form = head + "\"dpi\"\r\n\r\n" + std::string(other) + "\r\n" + head +
                             "\"file\"; filename=\"a.zpl\"\r\nContent-Type: text/plain\r\n\r\n" + std::string(content) +
                             "\r\n--" + boundary + "--\r\n";
    Require(PartOfForm("multipart/form-data; boundary=" + boundary, form, "file") == content);
    Require(PartOfForm("multipart/form-data; boundary=\"" + boundary + "\"", form, "else") == other);
}

std::string Encode(std::string_view text) {
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string encoded;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        encoded += {'%', Digits[byte >> 4], Digits[byte & 15]};
    }
    return encoded;
}

void WriteAndReadQuery(std::string_view name, std::string_view value) {
    auto const query = ReadQuery("dpi=203&" + Encode(name) + '=' + Encode(value) + "&&x");
    Require(query && query->at("dpi") == "203");
    if (name != "dpi" && name != "x") Require(query->at(std::string(name)) == value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<char const*>(data), size);
    auto const first = TakeUpTo(rest, '\n');
    ReadForm(first, rest);
    ReadForm("multipart/form-data; boundary=b", rest);
    WriteAndReadForm(rest, first);
    auto const decoded = DecodePercent(rest);
    Require(!decoded || decoded->size() <= rest.size());
    ReadQuery(rest);
    WriteAndReadQuery(first, rest);
    return 0;
}
