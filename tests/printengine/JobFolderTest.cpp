#include <fstream>
#include <set>

#include "tests/printengine/DeskFixture.h"

class JobFolderTest : public DeskFixture {
protected:
    std::filesystem::path Start(Scripting::ScriptGraphicContext& target, std::string_view name) {
        return target.StartJob(name, 1, {}, false, {}, std::nullopt, false);
    }
};

TEST_F(JobFolderTest, NoNameLeadsOutOfTheJobsFolder) {
    auto const target = Target(1, 1);
    for (std::string_view const name :
         {"label", "", ".", "..", "../../escape", "/etc/passwd", "a/b\\c", "a\0b", "\xC3\xA4", "x y\n"}) {
        auto const path = Start(*target, name);
        EXPECT_EQ(path.parent_path(), folder / "jobs") << name;
        EXPECT_EQ(path.lexically_normal(), path) << name;
        EXPECT_TRUE(std::filesystem::is_directory(path)) << name;
    }
    EXPECT_LE(Start(*target, std::string(5000, 'n')).filename().string().size(), 128u);
}

TEST_F(JobFolderTest, JobsOfOneNameHaveFoldersOfTheirOwn) {
    auto const target = Target(1, 1);
    EXPECT_NE(Start(*target, "same"), Start(*target, "same"));
}

TEST_F(JobFolderTest, HoldsPagesAndTheMarkOfTheEndAndNothingElse) {
    auto const target = Target(1, 1);
    auto const path = Start(*target, "job");
    for (unsigned page : {0u, 12u}) {
        target->StartLabel();
        target->EndLabel({});
        target->RenderPage(path, page, page == 12);
    }
    target->EndJob(path);
    std::set<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(path)) names.insert(entry.path().filename());
    EXPECT_EQ(names, (std::set<std::string>{"0", "12", "MetaData", "TransferDone"}));
}

TEST_F(JobFolderTest, FailuresAreTold) {
    auto const target = Target(1, 1);
    target->RenderPage(folder / "missing", 0, true);
    EXPECT_EQ(target->FileError(), "No such file or directory");
    EXPECT_EQ(warnings.size(), 1u);
    target->EndJob(folder / "missing");
    EXPECT_EQ(target->FileError(), "No such file or directory");

    std::filesystem::create_directories(folder);
    std::ofstream(folder / "jobs") << "a file where the folder should be";
    EXPECT_EQ(Start(*target, "job"), "");
    EXPECT_NE(target->FileError(), "");
    // Without a folder nothing is written, least of all where the process happens to stand.
    target->RenderPage({}, 123456, true);
    EXPECT_NE(target->FileError(), "");
    EXPECT_FALSE(std::filesystem::exists("123456"));
}
