#include "desktop/serve/ServeOptions.h"

#include <charconv>

#include "desktop/CommandLine.h"

namespace {

template <typename T>
std::optional<T> Number(std::string_view text, T high) {
    T value{};
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    bool const isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && value >= T{} && value <= high ? std::optional(value) : std::nullopt;
}

/// "HOST:PORT", or "PORT" for the host that is set already.
void ReadAddress(std::string const& text, ServeOptions& options) {
    auto const colon = text.rfind(':');
    if (colon != std::string::npos) options.host = text.substr(0, colon);
    auto const port = Number(std::string_view(text).substr(colon == std::string::npos ? 0 : colon + 1), 65535U);
    if (!port || options.host.empty())
        throw UsageError("--listen is HOST:PORT, with a PORT of 0 to 65535, not \"" + text + "\"");
    options.port = *port;
}

double Speed(std::string const& text) {
    auto const speed = Number(text, 1000.0);
    if (!speed) throw UsageError("--speed is 0 to 1000 inches a second, not \"" + text + "\"");
    return *speed;
}

}  // namespace

ServeOptions ParseServeOptions(std::vector<std::string> const& arguments) {
    ServeOptions options;
    std::vector<std::string> drawing;  // what zpl render knows too
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const& option = arguments[i];
        auto const value = [&] {
            if (i + 1 == arguments.size()) throw UsageError(option + " needs a value");
            return arguments[++i];
        };
        if (option == "--listen") {
            ReadAddress(value(), options);
        } else if (option == "--out") {
            options.outputFolder = value();
        } else if (option == "--state") {
            options.stateFolder = value();
        } else if (option == "--speed") {
            options.speed = Speed(value());
        } else if (option == "--pause-on-start") {
            options.pauseOnStart = true;
        } else if (option == "--preview") {
            options.preview = true;
        } else if (option == "--no-answers") {
            options.answers = false;
        } else if (option == "--help" || option == "-h") {
            options.help = true;
        } else if (option == "--dpi" || option == "--size" || option == "--tag") {
            drawing.push_back(option);
            drawing.push_back(value());
        } else {
            throw UsageError("unknown option " + option + "; zpl serve --help lists them all");
        }
    }
    RenderOptions const render = ParseRenderOptions(drawing);
    options.dpi = render.printerDpi;
    options.tag = render.tag;
    options.widthInches = render.widthInches;
    options.heightInches = render.heightInches;
    return options;
}

char const* ServeHelp() {
    return R"(usage: zpl serve [options]

A virtual label printer: any program can print to it. Each page becomes a file JOB-PAGE.png.

  --listen HOST:PORT  where it takes print streams (default 127.0.0.1:9100; port 0 picks a free one);
                      HOST is an IPv4 address or a name that has one
  --out DIR           where the pages go (default: the current folder)
  --dpi N             resolution of the printer: 203 (default), 300 or 600
  --size WxH          size of the label part (default 4x6in)
  --speed N           inches a second (default 6); 0 prints as fast as it goes
  --tag T             every label carries a tag: blank, or its memory as epc=3034F1,tid=E280,user=00,afi=00
  --pause-on-start    begins paused
  --no-answers        sends nothing back to those who ask the printer
  --preview           opens a window that shows the pages while they print
  --state DIR         where stored formats and counters are kept (default: the user's state folder)

While it runs it takes these words on its terminal: status, pause, resume, cancel, cancel-all, preview,
quit.
)";
}
