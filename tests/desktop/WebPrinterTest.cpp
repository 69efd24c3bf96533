#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "tests/support/HttpClient.h"
#include "tests/support/VirtualPrinterProcess.h"

// The printer behind its desk in the browser, and what is promised of the doors.

namespace {

using rapidjson::Document;
using rapidjson::Value;

std::string TextOf(Value const& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return buffer.GetString();
}

class WebPrinter : public testing::Test {
protected:
    explicit WebPrinter(std::vector<std::string> options = {}) : printer_(With(std::move(options))) {
        EXPECT_TRUE(VirtualPrinterProcess::Until([&] {
            return Port() != 0 && Client().Ask("GET", "/printer").status == 200;
        })) << printer_.Log();
    }
    static std::vector<std::string> With(std::vector<std::string> options) {
        options.insert(options.end(), {"--json", "--speed", "0", "--web", "127.0.0.1:0"});
        return options;
    }
    /// Where the page is served now; another one when it has been started again.
    int Port() const {
        static std::string const before = "{\"event\":\"web\",\"address\":\"http://127.0.0.1:";
        auto const log = printer_.Log();
        auto const at = log.rfind(before);
        return at == std::string::npos ? 0 : std::atoi(log.c_str() + at + before.size());
    }
    HttpClient Client() const { return HttpClient(Port()); }
    std::string Get(std::string const& path) const { return Client().Ask("GET", path).body; }
    testing::AssertionResult UntilDone(std::string const& job) const {
        return VirtualPrinterProcess::Until(
            [&] { return Get("/printer/jobs/" + job).find("\"state\":\"done\"") != std::string::npos; });
    }
    void Say(std::string const& word) const {
        EXPECT_EQ(Client().Ask("POST", "/printer/command", "{\"word\":\"" + word + "\"}", Json).status, 204);
    }

    static constexpr char const* Json = "Content-Type: application/json\r\n";
    VirtualPrinterProcess printer_;
};

TEST_F(WebPrinter, ShowsWhatPrintsAndTakesWords) {
    std::string const stream = "^XA^DFE:KEPT.ZPL^FO9,9^GB9,9,9^FS^XZ" + Label("one") + "^XA^FO9,9^A0,9^FDtwo^FS^QQ^XZ";
    EXPECT_EQ(Client().Ask("POST", "/printer/print", stream).status, 204);
    ASSERT_TRUE(UntilDone("one-1"));
    auto const job = Get("/printer/jobs/one-1");
    EXPECT_NE(job.find("\"pages\":2,\"printed\":2,\"stream\":true,\"findings\":[{"), std::string::npos) << job;
    EXPECT_EQ(Get("/printer/jobs/one-1/stream"), stream);
    EXPECT_EQ(Get("/printer/jobs/one-1/pages/2"), ReadRegularFile(printer_.Folder() / "out/one-1-2.png"));
    EXPECT_EQ(Client().Ask("GET", "/printer/jobs/one-1/pages/3").status, 404);
    EXPECT_EQ(Client().Ask("GET", "/printer/objects/E/KEPT.ZPL?format=png").Field("content-type"), "image/png");

    Say("pause");
    EXPECT_TRUE(
        VirtualPrinterProcess::Until([&] { return Get("/printer").find("\"paused\":true") != std::string::npos; }));
    printer_.Print(Label("waits"));
    EXPECT_EQ(Client().Ask("POST", "/write", R"({"device":{},"data":"~HS"})").status, 200);
    EXPECT_TRUE(VirtualPrinterProcess::Until([&] { return Client().Ask("POST", "/read").body.starts_with("\x02"); }));
    // What is told comes by another way than the answer itself.
    EXPECT_TRUE(VirtualPrinterProcess::Until(
        [&] { return Get("/printer/log").find("\"event\":\"answer\"") != std::string::npos; }));
    Say("resume");
    EXPECT_TRUE(UntilDone("waits-1"));
    EXPECT_EQ(Client().Ask("POST", "/printer/command", R"({"word":"quit"})", Json).status, 400);
}

TEST_F(WebPrinter, PrintsWhateverBecomesOfThePage) {
    pid_t const web = printer_.Child("zpl-web");
    ::kill(web, SIGSTOP);
    for (int i = 0; i < 3; ++i) printer_.Print(Label("stopped", 300));
    EXPECT_TRUE(VirtualPrinterProcess::Until([&] { return printer_.Kept().size() == 900; }));
    ::kill(web, SIGKILL);
    printer_.Print(Label("killed"));
    EXPECT_TRUE(VirtualPrinterProcess::Until([&] { return printer_.Kept().size() == 901; }));
    int const before = Port();
    EXPECT_TRUE(VirtualPrinterProcess::Until([&] { return Port() != before; }));
    printer_.Print(Label("again"));
    EXPECT_TRUE(UntilDone("again-1"));
}

/// Asks each door of the description, and holds the answer against what it says of it.
class Description : public WebPrinter {
protected:
    Description() { document_.Parse(Get("/openapi.json").c_str()); }

    std::string PathOf(std::string path, Value const& operation) const {
        std::map<std::string, std::string> const known = {
            {"job", "one-1"}, {"page", "1"}, {"device", "E"}, {"name", "KEPT.ZPL"}};
        if (!operation.HasMember("parameters")) return path;
        for (auto const& parameter : operation["parameters"].GetArray()) {
            // Parameters of the path are not shared.
            if (parameter.HasMember("$ref") || std::string(parameter["in"].GetString()) != "path") continue;
            std::string const name = parameter["name"].GetString();
            bool const isKnown = known.contains(name);
            Value const none("");
            Value const& example = parameter.HasMember("example") ? parameter["example"] : none;
            std::string const text = isKnown              ? known.at(name)
                                     : example.IsString() ? example.GetString()
                                                          : TextOf(example);
            path.replace(path.find('{' + name + '}'), name.size() + 2, text);
        }
        return path;
    }
    void Validate(Value const& schema, std::string const& body) {
        // References lead from the root.
        Document whole(rapidjson::kObjectType);
        auto& memory = whole.GetAllocator();
        Value all(rapidjson::kArrayType);
        all.PushBack(Value(schema, memory), memory);
        whole.AddMember("allOf", all, memory);
        whole.AddMember("components", Value(document_["components"], memory), memory);
        rapidjson::SchemaDocument const rules(whole);
        rapidjson::SchemaValidator validator(rules);
        Document answer;
        EXPECT_FALSE(answer.Parse(body.c_str()).HasParseError()) << body;
        EXPECT_TRUE(answer.Accept(validator)) << body << " breaks " << validator.GetInvalidSchemaKeyword();
    }
    HttpReply Ask(std::string const& method, std::string const& path, Value const& operation) const {
        std::string body, fields;
        if (operation.HasMember("requestBody")) {
            auto const type = operation["requestBody"]["content"].MemberBegin();
            fields = "Content-Type: " + std::string(type->name.GetString()) + "\r\n";
            auto const& schema = type->value["schema"];
            body = schema.HasMember("example") ? TextOf(schema["example"]) : Label("x") + Label("y");
        }
        bool const wantsAll = path.ends_with("/labels/4x6");
        if (wantsAll) fields += "Accept: application/json\r\n";
        int const connection = Client().Connect();
        HttpClient::Send(connection, method + ' ' + path +
                                         " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\nLast-Event-ID: 0\r\n" +
                                         fields + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
        auto const reply = HttpClient::Read(HttpClient::Receive(connection, path == "/printer/events" ? "\n\n" : ""));
        ::close(connection);
        return reply;
    }
    void Check(std::string const& method, std::string const& path, Value const& operation) {
        auto const reply = Ask(method, PathOf(path, operation), operation);
        auto const success = operation["responses"].MemberBegin();
        ASSERT_EQ(std::to_string(reply.status), success->name.GetString()) << reply.body;
        if (!success->value.HasMember("content")) {
            EXPECT_EQ(reply.body, "");
            return;
        }
        std::string const type = reply.Field("content-type"), plain = type.substr(0, type.find(';'));
        auto const& types = success->value["content"];
        ASSERT_TRUE(types.HasMember(plain.c_str())) << type;
        if (plain == "application/json") Validate(types[plain.c_str()]["schema"], reply.body);
    }

    Document document_;
};

TEST_F(Description, IsHeldByTheServer) {
    ASSERT_TRUE(document_.IsObject());
    printer_.Print("^XA^DFE:KEPT.ZPL^FO9,9^GB9,9,9^FS^XZ" + Label("one"));
    ASSERT_TRUE(UntilDone("one-1"));
    unsigned doors = 0;
    for (auto const& path : document_["paths"].GetObject()) {
        for (auto const& operation : path.value.GetObject()) {
            std::string method = operation.name.GetString();
            for (char& c : method) c = static_cast<char>(std::toupper(c));
            SCOPED_TRACE(method + ' ' + path.name.GetString());
            Check(method, path.name.GetString(), operation.value);
            ++doors;
        }
    }
    EXPECT_GE(doors, 24U);
}

}  // namespace
