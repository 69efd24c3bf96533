#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "foundation/Files.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;

rapidjson::Document Read(fs::path const& file) {
    rapidjson::Document document;
    document.Parse(ReadRegularFile(file).c_str());
    EXPECT_FALSE(document.HasParseError()) << file << ": " << GetParseError_En(document.GetParseError());
    return document;
}

TEST(ReportSchema, HoldsForWhatTheProgramWrites) {
    auto const schemaText = Read("docs/report.schema.json");
    ASSERT_FALSE(schemaText.HasParseError());
    rapidjson::SchemaDocument const schema(schemaText);
    TemporaryDirectory const folder;
    // What the examples do not show: unread inputs, kept places, tags, white, findings, barcodes at fault, numbers that
    // nothing fills.
    WriteFileAtomically(folder / "odd.zpl",
                        "^XA^FO9,9^FN1\"Name\"^FS^FT9,40^FN2^FS^FN2^FD\xFFx^FS^FO0,0^GB9,9,9,W^FS^FO9,60^BEN^FDx^FS"
                        "^FO900,9^FDoff^FS^FO0,90^BCN,20^FDlow^FS^XY^RFW,H^FD1234^FS^PQ2^XZ");
    struct Call {
        std::string arguments;
        std::size_t leastFields;
    };
    for (auto const& [arguments, leastFields] : std::vector<Call>{
             {"render --json examples/*.zpl --out " + folder.Path().string(), 100},
             {"render --json --distinct --rotate 90 examples/inventory-batch.zpl --out " + folder.Path().string(), 10},
             {"render --json --job examples/stored-format.zpl --out " + folder.Path().string(), 10},
             {"render --json --format pdf --tag blank " + (folder / "odd.zpl").string() + " --out " +
                  folder.Path().string(),
              10},
             {"check --json examples/*.zpl " + (folder / "odd.zpl").string() + " absent.zpl", 100}}) {
        auto const out = folder / "out.json";
        auto const command = "'" ZPL_PROGRAM "' " + arguments + " >" + out.string() + " 2>/dev/null";
        EXPECT_NE(std::system(command.c_str()), -1);
        auto const report = Read(out);
        rapidjson::SchemaValidator validator(schema);
        bool const isValid = report.Accept(validator);
        rapidjson::StringBuffer place;
        validator.GetInvalidDocumentPointer().StringifyUriFragment(place);
        EXPECT_TRUE(isValid) << arguments << ": " << place.GetString() << ": " << validator.GetInvalidSchemaKeyword();
        std::size_t fields = 0;
        for (auto const& input : report["inputs"].GetArray()) {
            for (auto const* list : {"pages", "labels"}) {
                if (!input.HasMember(list)) continue;
                for (auto const& page : input[list].GetArray()) fields += page["fields"].Size();
            }
        }
        EXPECT_GE(fields, leastFields) << arguments;
    }
}

}  // namespace
