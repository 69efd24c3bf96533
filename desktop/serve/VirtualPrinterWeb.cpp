// What the printer tells the desk in the browser.

#include <cstdio>

#include "desktop/serve/VirtualPrinter.h"
#include "foundation/Base64.h"
#include "foundation/Json.h"
#include "jobhost/model/Findings.h"

namespace {

constexpr std::size_t LongestStream = 1 << 20;  // that is kept for a job

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

}  // namespace

void VirtualPrinter::StartWeb() {
    web_ = std::make_unique<WebProcess>(
        options_.programFolder / "zpl-web", options_.web,
        WebProcess::Hooks{[this](std::string const& word) {
                              if (!Command(word)) Tell("the page asks for " + Printable(word) + ", which is no word");
                          },
                          [this](std::string const& line) { Tell(line); },
                          [this](std::string const& address) {
                              Tell({"labels are written and seen at " + address, "web",
                                    [&](JsonWriter& writer) { writer.Key("address").String(address); }});
                          },
                          [this] { TellWebOfPrinter(); }});
}

/// What does not change while it runs, in front of all that happens.
void VirtualPrinter::TellWebOfPrinter() {
    JsonWriter writer;
    writer.StartObject().Key("event").String("printer");
    writer.Key("address").String(AddressText(options_.host, handler_->Port()));
    writer.Key("out").String(options_.outputFolder.string()).Key("dpi").Int(options_.dpi);
    writer.Key("objects").String((state_ / "zplhost" / "SavedZPLFormats").string());
    writer.Key("size").String(Number(options_.widthInches) + 'x' + Number(options_.heightInches) + "in");
    writer.Key("tag").String(options_.tag ? options_.tag->Bank("epc") : "").Key("words").StartArray();
    for (char const* const word : {"pause", "resume", "cancel", "cancel-all", "speed"}) writer.String(word);
    web_->Tell(writer.EndArray().EndObject().Text());
    toldState_.clear();
    TellWebOfState();
}

void VirtualPrinter::TellWeb(PrinterEvent const& event) {
    if (!web_) return;
    web_->Tell(event.Json());
    TellWebOfState();
}

/// Where it differs from what was told.
void VirtualPrinter::TellWebOfState() {
    JsonWriter writer;
    writer.StartObject().Key("event").String("state").Key("paused").Bool(driver_->IsPaused());
    writer.Key("printing").String(driver_->JobUnderWay()).Key("speed").String(Number(driver_->Speed())).EndObject();
    auto state = writer.Text();
    if (state == toldState_) return;
    web_->Tell(state);
    toldState_ = std::move(state);
}

/// The bytes of a stream go with its last packet.
void VirtualPrinter::TellWebOfPacket(Zpl::Host::Packet const& packet) {
    if (!web_) return;
    if (firstPacket_ == 0) firstPacket_ = packet.Number;
    bool const isEnd = packet.Command == Zpl::Host::Packet::EndOfStream;
    if (stream_.size() <= LongestStream) stream_ += packet.payload;
    JsonWriter writer;
    writer.StartObject().Key("event").String("stream").Key("first").Int(firstPacket_);
    writer.Key("packet").Int(packet.Number).Key("session").Int(packet.SessionId);
    if (isEnd && stream_.size() <= LongestStream) writer.Key("data").String(Base64::Encode(stream_));
    web_->Tell(writer.EndObject().Text());
    if (!isEnd) return;
    stream_.clear();
    firstPacket_ = 0;
}
