#include "desktop/web/Refusal.h"

#include <new>

#include "foundation/DebugZones.h"
#include "foundation/Json.h"

HttpAnswer RefusalAnswer(std::string_view path, unsigned status, std::string const& sentence) {
    HttpAnswer answer{status, "text/plain; charset=utf-8", sentence + "\n"};
    if (!path.starts_with("/v1/")) {
        JsonWriter writer;
        answer.type = "application/json";
        answer.body = writer.StartObject().Key("error").String(sentence).EndObject().Text() + "\n";
    }
    constexpr unsigned TooMany = 429;
    constexpr unsigned Unavailable = 503;
    if (status == TooMany || status == Unavailable) answer.fields.emplace_back("Retry-After", "1");
    return answer;
}

HttpAnswer AnswerOf(std::string_view path, std::function<HttpAnswer()> const& make) {
    try {
        return make();
    } catch (Refusal const& refusal) {
        return RefusalAnswer(path, refusal.Status(), refusal.what());
    } catch (std::bad_alloc const&) {
        return RefusalAnswer(path, 503, "this takes more memory than there is");
    } catch (std::exception const& error) {
        DebugLog(Error, error.what());
        return RefusalAnswer(path, 500, error.what());
    }
}
