#include "jobhost/model/Packet.h"

#include <gtest/gtest.h>

#include "foundation/Base64.h"
#include "jobhost/model/NetworkResponse.h"
#include "jobhost/model/RfidReadResponses.h"

namespace {

using Zpl::Host::Packet;

TEST(Packet, IsReadFromBase64) {
    struct Row {
        char const* name;
        std::string decoded;
        std::optional<Packet> packet;
    };
    std::vector<Row> const rows = {
        {"header and payload", R"({"SessionId":7,"Command":0}^XA^XZ)", Packet{7, 0, "^XA^XZ"}},
        {"no payload", R"({"SessionId":7,"Command":1})", Packet{7, 1, ""}},
        {"any order, any member", R"({"x":"y","Command":1,"SessionId":2}a)", Packet{2, 1, "a"}},
        {"bytes of the payload", std::string(R"({"SessionId":1,"Command":0})") + '\0' + "\xFF}",
         Packet{1, 0, {"\0\xFF}", 3}}},
        {"low 8 bits", R"({"SessionId":257,"Command":-255})", Packet{1, 1, ""}},
        {"a fraction", R"({"SessionId":2.9,"Command":1.0})", Packet{2, 1, ""}},
        {"beyond all numbers", R"({"SessionId":1e300,"Command":1})", {}},
        {"the first of doubled keys", R"({"Command":1,"Command":0,"SessionId":2})", Packet{2, 1, ""}},
        {"a brace in a text ends the header", R"({"a":"}","SessionId":1,"Command":1})", {}},
        {"a missing key", R"({"SessionId":1})", {}},
        {"a key that is no number", R"({"SessionId":"1","Command":1})", {}},
        {"nothing", "", {}},
        {"no object", "^XA^XZ", {}},
        {"text behind the value", R"([1] })", {}},
    };
    for (auto const& row : rows) EXPECT_EQ(Packet::Parse(Base64::Encode(row.decoded)), row.packet) << row.name;
    EXPECT_FALSE(
        Packet::Parse("eyJTZXNzaW9uSWQi"
                      "O"))
        << "length is no multiple of 4";
    EXPECT_FALSE(Packet::Parse(Base64::Encode(std::string(1'000'000, '[').append("}"))));
    Packet const packet{9, 1, "^XA\xFF", 400};
    EXPECT_EQ(Packet::Parse(packet.Text()), packet);
}

TEST(NetworkResponse, TravelsAsJson) {
    using zpl::NetworkResponse;
    EXPECT_EQ(NetworkResponse::Create(NetworkResponse::Status::Done, std::nullopt), R"({"State":2})");
    EXPECT_EQ(NetworkResponse::Create(NetworkResponse::Status::Answer, "a\"b"), R"({"State":1,"Data":"a\"b"})");
    NetworkResponse const response{NetworkResponse::Status::Answer, "x\ny"};
    EXPECT_EQ(NetworkResponse::Parse(NetworkResponse::Create(response.status, response.data)), response);
    for (char const* const bad : {"", "2", "{}", R"({"State":"2"})", R"({"State":2,"Data":3})", R"({"State":2}x)"})
        EXPECT_FALSE(NetworkResponse::Parse(bad)) << bad;
}

TEST(RfidReadResponses, AreAnArrayOfFields) {
    EXPECT_EQ(ParseRfidReadResponses(R"([{"Sequence":3,"Data":"E2"},{"Data":"","Sequence":4}])"),
              (std::vector<RfidReadResponse>{{3, "E2"}, {4, ""}}));
    EXPECT_EQ(ParseRfidReadResponses("[]"), std::vector<RfidReadResponse>());
    for (char const* const bad : {"", "{}", "[3]", R"([{"Sequence":-1,"Data":""}])", R"([{"Sequence":1}])"})
        EXPECT_FALSE(ParseRfidReadResponses(bad)) << bad;
}

}  // namespace
