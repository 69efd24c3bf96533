#include "library/forms/StoredFormats.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "frontend/context/ObjectStore.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

class StoredFormatsTest : public testing::Test {
protected:
    StoredFormatsTest() {
        for (char const* device : {"E", "R", "B"}) std::filesystem::create_directories(storage_ / device);
    }
    void Put(char const* path, std::string const& bytes = "^FDx") const { std::ofstream(storage_ / path) << bytes; }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (auto const& format : formats_.List()) names.push_back(format.FullName());
        return names;
    }
    template <typename Call>
    static std::string ReasonOf(Call const& call) {
        try {
            call();
        } catch (std::runtime_error const& error) {
            return error.what();
        }
        return {};
    }

    TemporaryDirectory storage_;
    StoredFormats formats_{storage_.Path()};
};

TEST_F(StoredFormatsTest, ListsFormatsAndNothingElse) {
    for (char const* path : {"E/B.ZPL", "R/A.ZPL", "E/A.ZPL", "E/LOGO.GRF", "E/B.ZPL.7-7.tmp", "E/low.zpl", "B/C.ZPL"})
        Put(path);
    std::filesystem::create_directory(storage_ / "E/DIR.ZPL");
    EXPECT_EQ(Names(), (std::vector<std::string>{"E:A.ZPL", "R:A.ZPL", "E:B.ZPL"}));
    EXPECT_EQ(formats_.List().front().bytes, 4U);
    std::filesystem::remove_all(storage_.Path());
    EXPECT_TRUE(Names().empty());
}

TEST_F(StoredFormatsTest, SavesAndReadsByteForByte) {
    std::string const bytes("^FO1,1^FD\0\xFF\r\n", 13);
    for (char const* device : {"E", "R"}) {
        formats_.Save({device, "NEW.ZPL"}, "old");
        formats_.Save({device, "NEW.ZPL"}, bytes);
        EXPECT_EQ(formats_.Read({device, "NEW.ZPL"}), bytes);
    }
    EXPECT_EQ(Names().size(), 2U);
}

TEST_F(StoredFormatsTest, AreNamedAsCommandsNameThem) {
    for (auto const& [text, fullName] :
         {std::pair("R:A.ZPL", "R:A.ZPL"), {"E:ORDER.ZPL", "E:ORDER.ZPL"}, {"A.ZPL", "E:A.ZPL"}, {"", "E:"}})
        EXPECT_EQ(StoredFormat::Named(text).FullName(), fullName);
}

TEST_F(StoredFormatsTest, SaysInASentenceWhatCannotBeDone) {
    std::string const most(std::size_t{40} << 20, 'x');
    formats_.Save({"E", "MOST.ZPL"}, most);
    auto const save = [&](char const* device, char const* name) {
        return ReasonOf([&] { formats_.Save({device, name}, most); });
    };
    EXPECT_EQ(save("E", "MORE.ZPL"), "object E:MORE.ZPL is not stored: its device is full");
    for (auto const& [device, name] : {std::pair("E", "../X.ZPL"), {"E", "X.GRF"}, {"Z", "X.ZPL"}, {"E", ""}})
        EXPECT_NE(save(device, name).find("cannot be the name of a format"), std::string::npos) << name;
    EXPECT_EQ(ReasonOf([&] { formats_.Read({"E", "MORE.ZPL"}); }), "E:MORE.ZPL is not in the printer any more");

    std::filesystem::remove(storage_ / "E/MOST.ZPL");  // by another process
    EXPECT_EQ(save("E", "MORE.ZPL"), "");
    std::filesystem::remove_all(storage_ / "R");
    std::ofstream(storage_ / "R") << "no folder";
    EXPECT_NE(save("R", "MORE.ZPL").find("object R:MORE.ZPL is not stored: "), std::string::npos);
}

}  // namespace
