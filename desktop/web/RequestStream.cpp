#include "desktop/web/RequestStream.h"

#include <stdexcept>

#include "desktop/web/FormData.h"
#include "desktop/web/Refusal.h"

std::string StreamOf(HttpRequest& request) {
    if (auto const encoding = request.Field("content-encoding"); !encoding.empty() && encoding != "identity")
        throw Refusal(415, "a body is taken as it is, without Content-Encoding");
    constexpr std::string_view Form = "multipart/";
    auto const type = request.Field("content-type");
    if (!type.starts_with(Form)) return std::move(request.body);
    try {
        return std::string(PartOfForm(type, request.body, "file"));
    } catch (std::invalid_argument const& error) {
        throw Refusal(400, error.what());
    }
}
