#include <gtest/gtest.h>

#include "foundation/Base64.h"
#include "foundation/Files.h"
#include "tests/support/HttpClient.h"
#include "tests/support/TemporaryDirectory.h"

// What the doors for programs answer, over real sockets.

namespace {

std::string Label(std::string const& text) { return "^XA^FO20,20^A0N,40,40^FD" + text + "^FS^XZ"; }

std::string ForLine(std::string const& text, std::string const& name = "file") {
    return "--line\r\nContent-Disposition: form-data; name=\"other\"\r\n\r\nnothing\r\n--line\r\n"
           "content-disposition: form-data; filename=\"a.zpl\"; name=\"" +
           name + "\"\r\nContent-Type: text/plain\r\n\r\n" + text + "\r\n--line--\r\n";
}

std::string const Form = "Content-Type: multipart/form-data; boundary=line\r\n";

unsigned Side(std::string const& png, std::size_t at) {
    unsigned side = 0;
    for (std::size_t i = at; i < at + 4 && i < png.size(); ++i) side = side << 8 | static_cast<unsigned char>(png[i]);
    return side;
}

class WebDoors : public testing::Test {
protected:
    /// What the command line makes of a stream.
    std::string Drawn(std::string const& stream, std::string const& options, std::string const& name) {
        EXPECT_FALSE(WriteFileAtomically(folder_.Path() / "in.zpl", stream));
        std::string const folder = folder_.Path().string();
        std::string const command =
            "'" ZPL_PROGRAM "' render '" + folder + "/in.zpl' --out '" + folder + "' " + options;
        EXPECT_EQ(std::system((command + " > /dev/null 2>&1").c_str()), 0);
        return ReadRegularFile(folder_.Path() / name);
    }

    TemporaryDirectory folder_;
    WebProgram const server_;
    HttpClient const client_ = server_.Client();
};

TEST_F(WebDoors, DrawWhatTheCommandLineDraws) {
    std::string const stream = ReadRegularFile("examples/shipping-label.zpl") + Label("second");
    auto const png = client_.Ask("POST", "/render?page=2&dpi=300&size=3x2in", stream);
    EXPECT_EQ(png.Field("content-type"), "image/png");
    EXPECT_EQ(png.Field("x-total-count"), "2");
    EXPECT_TRUE(png.body == Drawn(stream, "--dpi 300 --size 3x2in", "in-2.png"));
    EXPECT_TRUE(client_.Ask("POST", "/render?format=pdf", stream).body == Drawn(stream, "--format pdf", "in.pdf"));
    EXPECT_TRUE(client_.Ask("POST", "/render?format=pbm", stream).body == Drawn(stream, "--format pbm", "in-1.pbm"));

    auto const report = client_.Ask("POST", "/render?format=json&page=2&picture=1", stream);
    auto const at = report.body.find("base64,") + 7;
    auto const picture = Base64::Decode(report.body.substr(at, report.body.find('"', at) - at));
    EXPECT_TRUE(picture == Drawn(stream, "", "in-2.png"));
    EXPECT_NE(report.body.find("\"text\":\"second\""), std::string::npos);
    auto const check = client_.Ask("POST", "/check", "^XA^FO9000,1^A0,9^FDx^FS^QQ^XZ");
    EXPECT_NE(check.body.find("unknown-command"), std::string::npos) << check.body;
    EXPECT_NE(check.body.find("off-page"), std::string::npos) << check.body;
}

TEST_F(WebDoors, OfLabelsAnswerClientsThatAreThere) {
    std::string const two = Label("one") + Label("two"), at = "/v1/printers/8dpmm/labels/4x6/";
    struct Row {
        std::string method, path, fields, body;
        int status;
        std::string type;
    } const rows[] = {
        {"POST", at + "0/", "", two, 200, "image/png"},
        {"POST", at + "1", "Accept: text/html, application/pdf\r\n", two, 200, "application/pdf"},
        {"POST", at, "Accept: application/pdf\r\n", two, 200, "application/pdf"},
        {"POST", at, "Accept: application/json\r\n", two, 200, "application/json"},
        {"POST", at + "0/", "Content-Type: application/x-www-form-urlencoded\r\n", two, 200, "image/png"},
        {"POST", at + "1/", Form, ForLine(two), 200, "image/png"},
        {"POST", at + "0/", Form, ForLine(two, "x"), 404, "text/plain; charset=utf-8"},
        {"POST", at + "0/", Form, "--line\r\nno end", 400, "text/plain; charset=utf-8"},
        {"GET", at + "0/%5Exa%5EFO9,9%5EGB9/9%5EFS%5EXZ", "", "", 200, "image/png"},
        {"GET", at + "0/^XA^FO9,9^A0,9^FDwhat?^FS^XZ", "", "", 200, "image/png"},
        {"GET", at + "/^XA^FO9,9^GB9^FS^XZ", "Accept: application/pdf\r\n", "", 200, "application/pdf"},
        {"GET", at + "0/%5", "", "", 400, "text/plain; charset=utf-8"},
        {"GET", at + "0/", "", "", 400, "text/plain; charset=utf-8"},
        {"POST", at + "2/", "", two, 404, "text/plain; charset=utf-8"},
        {"POST", at + "0/", "", "no label", 404, "text/plain; charset=utf-8"},
        {"POST", at, "", two, 400, "text/plain; charset=utf-8"},
        {"POST", at + "0/", "Accept: application/xml\r\n", two, 406, "text/plain; charset=utf-8"},
        {"POST", at + "0/", "X-Rotation: 45\r\n", two, 400, "text/plain; charset=utf-8"},
        {"POST", "/v1/printers/6dpmm/labels/4x6/0/", "", two, 400, "text/plain; charset=utf-8"},
        {"POST", "/v1/printers/8dpmm/labels/4by6/0/", "", two, 400, "text/plain; charset=utf-8"},
        {"DELETE", at + "0/", "", two, 405, "text/plain; charset=utf-8"},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.method + ' ' + row.path + ' ' + row.fields);
        auto const reply = client_.Ask(row.method, row.path, row.body, row.fields);
        EXPECT_EQ(reply.status, row.status) << reply.body;
        EXPECT_EQ(reply.Field("content-type"), row.type);
        if (row.status == 200 && row.method == "POST") {
            EXPECT_EQ(reply.Field("x-total-count"), "2");
        }
    }
    EXPECT_TRUE(client_.Ask("POST", at + "1/", two).body == Drawn(two, "", "in-2.png"));
}

TEST_F(WebDoors, TurnPages) {
    std::string const stream = "^XA^FO0,0^GB100,50,50^FS^XZ";
    auto const corner = [&](std::string const& rotation) {
        auto const pbm = client_.Ask("POST", "/render?format=pbm&size=203x406dots&rotate=" + rotation, stream).body;
        std::string const size = rotation == "0" || rotation == "180" ? "P4\n203 406\n" : "P4\n406 203\n";
        EXPECT_TRUE(pbm.starts_with(size)) << rotation;
        std::size_t const stride = size[3] == '2' ? 26 : 51, rows = (pbm.size() - size.size()) / stride;
        auto const black = [&](std::size_t x, std::size_t y) {
            return (static_cast<unsigned char>(pbm[size.size() + y * stride + x / 8]) >> (7 - x % 8) & 1) != 0;
        };
        std::size_t const right = size[3] == '2' ? 202 : 405;
        return std::string{black(0, 0) ? '1' : '0', black(right, 0) ? '1' : '0', black(right, rows - 1) ? '1' : '0',
                           black(0, rows - 1) ? '1' : '0'};
    };
    EXPECT_EQ(corner("0"), "1000");
    EXPECT_EQ(corner("90"), "0100");
    EXPECT_EQ(corner("180"), "0010");
    EXPECT_EQ(corner("270"), "0001");
    auto const png = client_.Ask("POST", "/v1/printers/8dpmm/labels/1x2/0/", stream, "X-Rotation: 90\r\n").body;
    EXPECT_EQ(Side(png, 16), 406U);
    EXPECT_EQ(Side(png, 20), 203U);
}

TEST_F(WebDoors, RememberNothingButForASession) {
    std::string const store = "^XA^DFR:A.ZPL^FO20,20^GB99,99,9^FS^XZ", recall = "^XA^XFR:A.ZPL^XZ";
    EXPECT_EQ(client_.Ask("POST", "/render", store).status, 404);
    EXPECT_EQ(client_.Ask("POST", "/render", recall).status, 404);
    EXPECT_EQ(client_.Ask("POST", "/check?session=mine", store).status, 200);
    EXPECT_EQ(client_.Ask("POST", "/render?session=mine", recall).status, 200);
    EXPECT_EQ(client_.Ask("POST", "/render?session=yours", recall).status, 404);
    EXPECT_EQ(client_.Ask("POST", "/render?session=../mine", recall).status, 400);
}

}  // namespace
