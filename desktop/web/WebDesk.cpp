#include "desktop/web/WebDesk.h"

#include <unistd.h>

#include <algorithm>
#include <thread>

#include "desktop/web/ObjectDoors.h"
#include "desktop/web/PageFiles.h"
#include "desktop/web/Refusal.h"

namespace {

unsigned Threads() { return std::max(1U, std::thread::hardware_concurrency()); }

/// Where Debian has the editor that the page uses.
constexpr char const* Editor = "/usr/share/javascript/codemirror";

std::vector<Door> FilesOf(std::filesystem::path const& folder) {
    PageFiles files;
    files.Add("/", folder / "page");
    files.Add("/", folder / "doors");
    files.Add("/", folder / "commands");
    files.Add("/examples/", folder / "examples");
    files.Add("/codemirror/", Editor);
    return files.List();
}

}  // namespace

WebDesk::WebDesk(WebOptions const& options, MachineSettings const& machine, std::filesystem::path const& files,
                 bool hasPrinter)
    : options_(options),
      guard_({options.host, options.hosts, options.origins}),
      server_(options.host, options.port, {}, Entrance()),
      drawing_(machine, Threads()),
      printing_(hasPrinter ? &printer_ : nullptr, [this](std::string const& word) { return link_->Say(word); }) {
    router_.Add(drawing_.List());
    router_.Add(printing_.List());
    router_.Add(ObjectDoors(hasPrinter ? &printer_ : nullptr, drawing_));
    router_.Add(FilesOf(files));
    if (!hasPrinter) return;
    auto const take = [this](std::string_view line) {
        printer_.Take(line);
        server_.WakeFeeds();
    };
    // Without its printer this is of no use.
    link_.emplace(STDIN_FILENO, STDOUT_FILENO, take, [this] { server_.Stop(); });
    link_->Say("address " + Address());
}

HttpServer::Doors WebDesk::Entrance() {
    return {[this](HttpRequest const& request) { return Admit(request); },
            [this](HttpRequest request, HttpServer::Reply const& reply) { Open(std::move(request), reply); },
            [this](HttpRequest const& request, unsigned status, std::string const& sentence) {
                return Refuse(request, status, sentence);
            }};
}

std::string WebDesk::Address() const {
    bool const isWide = options_.host == "0.0.0.0" || options_.host == "::";
    std::string const host = isWide ? "127.0.0.1" : options_.host;
    bool const isV6 = host.find(':') != std::string::npos;
    return "http://" + (isV6 ? '[' + host + ']' : host) + ':' + std::to_string(server_.Port()) + '/';
}

void WebDesk::Run() {
    server_.OnEndSignal([this] { server_.Stop(); });
    server_.Run();
}

/// Who may not ask is refused before anything that was sent is looked at, and so is what leads nowhere.
std::optional<HttpAnswer> WebDesk::Admit(HttpRequest const& request) const {
    if (auto const sentence = guard_.Refusal(request)) return Refuse(request, 403, *sentence);
    if (request.method == "OPTIONS") return Complete(Preflight(request), guard_.AllowedOrigin(request));
    try {
        router_.Find(request);
    } catch (Refusal const& refusal) {
        return Refuse(request, refusal.Status(), refusal.what());
    }
    return std::nullopt;
}

void WebDesk::Open(HttpRequest request, HttpServer::Reply const& reply) const {
    std::string const path = request.path;
    auto const complete = [this, reply, origin = guard_.AllowedOrigin(request)](HttpAnswer answer) {
        reply(Complete(std::move(answer), origin));
    };
    try {
        router_.Open(std::move(request), complete);
    } catch (...) {
        complete(AnswerOf(path, []() -> HttpAnswer { throw; }));
    }
}

HttpAnswer WebDesk::Refuse(HttpRequest const& request, unsigned status, std::string const& sentence) const {
    auto answer = RefusalAnswer(request.path, status, sentence);
    if (status == 405) answer.fields.emplace_back("Allow", router_.MethodsOf(request.path));
    return Complete(std::move(answer), guard_.AllowedOrigin(request));
}

/// What a browser asks before it lets a page of another origin ask.
HttpAnswer WebDesk::Preflight(HttpRequest const& request) const {
    HttpAnswer answer{204, {}, {}};
    std::string const methods = router_.MethodsOf(request.path);
    answer.fields = {{"Allow", methods}};
    if (guard_.AllowedOrigin(request).empty()) return answer;
    answer.fields.emplace_back("Access-Control-Allow-Methods", methods);
    answer.fields.emplace_back("Access-Control-Allow-Headers", "Accept, Content-Type, X-Rotation");
    answer.fields.emplace_back("Access-Control-Allow-Private-Network", "true");
    answer.fields.emplace_back("Access-Control-Max-Age", "600");
    return answer;
}

HttpAnswer WebDesk::Complete(HttpAnswer answer, std::string const& origin) const {
    answer.fields.emplace_back("X-Content-Type-Options", "nosniff");
    answer.fields.emplace_back("Cache-Control", "no-store");
    if (options_.origins.empty()) answer.fields.emplace_back("Cross-Origin-Resource-Policy", "same-origin");
    if (origin.empty()) return answer;
    answer.fields.emplace_back("Access-Control-Allow-Origin", origin);
    answer.fields.emplace_back("Access-Control-Expose-Headers", "X-Total-Count");
    answer.fields.emplace_back("Vary", "Origin");
    return answer;
}
