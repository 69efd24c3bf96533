#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "foundation/AppSettings.h"
#include "foundation/Features.h"
#include "foundation/Files.h"
#include "foundation/Json.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

TEST(Settings, LaterFilesWinMemberByMember) {
    TemporaryDirectory const folder;
    WriteFileAtomically(folder / "a.json",
                        R"({"SystemFontsDir":"/fonts","ExternalPropertySubscriptionTimeoutMS":250})");
    WriteFileAtomically(folder / "b.json", R"({"SystemFontsDir":"/other"})");
    WriteFileAtomically(folder / "bad.json", R"({"SystemFontsDir":)");
    auto& settings = AppSettings::GetInstance();
    EXPECT_TRUE(settings.LoadFile(folder / "a.json"));
    EXPECT_TRUE(settings.LoadFile(folder / "b.json"));
    EXPECT_FALSE(settings.LoadFile(folder / "bad.json"));
    EXPECT_FALSE(settings.LoadFile(folder / "missing.json"));
    EXPECT_EQ(settings.SystemFontsDir(), "/other");
    EXPECT_EQ(settings.ExternalPropertySubscriptionTimeoutMS(), 250U);
}

TEST(Settings, FeaturesComeFromTheFileAndTheFolder) {
    TemporaryDirectory const folder;
    std::filesystem::create_directory(folder / "more");
    WriteFileAtomically(folder / "Features.json", R"({"Features":["DisablePausing", 3]})");
    WriteFileAtomically(folder / "more/tags.json", R"({"Features":["RfidEncoderSupport"]})");
    WriteFileAtomically(folder / "more/broken.json", "[");
    Features const features(folder / "Features.json", folder / "more");
    EXPECT_TRUE(features.Has(FeatureNames::disablePausing));
    EXPECT_TRUE(features.Has(FeatureNames::rfidEncoderSupport));
    EXPECT_FALSE(features.Has(FeatureNames::tracklessZplJobQueue));
    EXPECT_FALSE(Features(folder / "none", folder / "none").Has(FeatureNames::disablePausing));
}

TEST(Json, FromElsewhereIsReadOnlyIfItCanBeWrittenAgain) {
    for (char const* const good :
         {R"(["\uD83D\uDE00\ud83d\ude00"])", R"({"\\uDE00":"\uD7FF\uE000"})", "[\"\xED\x9F\xBF\"]"}) {
        rapidjson::Document document;
        EXPECT_TRUE(ReadJson(good, document)) << good;
    }
    for (std::string const& bad :
         {std::string(R"(["\uDE00"])"), std::string(R"({"\uD83D\uDE00\udE00":1})"), std::string(R"(["\\\uDFFF"])"),
          std::string(R"(["\uD83D"])"), std::string("[\"\xED\xB8\x80\"]"), std::string("[\"\xFF\"]"), std::string("[1"),
          std::string(2'000'000, '[')}) {
        rapidjson::Document document;
        EXPECT_FALSE(ReadJson(bad, document)) << bad.substr(0, 80);
    }
}

TEST(Json, WritesTextThatIsNoUtf8WithReplacements) {
    JsonWriter writer;
    writer.StartObject().Key("a").String("x\xFFy\n").Key("b").StartArray().Int(-3).Bool(true).EndArray().EndObject();
    EXPECT_EQ(writer.Text(), "{\"a\":\"x\xEF\xBF\xBDy\\n\",\"b\":[-3,true]}");
}

}  // namespace
