#include <sys/resource.h>

#include <csignal>
#include <fstream>
#include <set>

#include "PrintEngine/Printing/JobMetaData.h"
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
    EXPECT_TRUE(Start(*target, "..a.b-1_\xC3").filename().string().starts_with("__a_b-1__-"));
    EXPECT_LE(Start(*target, std::string(5000, 'n')).filename().string().size(), 128u);
}

TEST_F(JobFolderTest, JobsOfOneNameHaveFoldersOfTheirOwn) {
    auto const target = Target(1, 1);
    EXPECT_NE(Start(*target, "same"), Start(*target, "same"));
    // Nor is one taken that an earlier process of this number has left.
    std::string const last = Start(*target, "same").string();
    auto const serial = last.rfind('-') + 1;
    std::filesystem::path const left = last.substr(0, serial) + std::to_string(std::stoi(last.substr(serial)) + 1);
    std::filesystem::create_directory(left);
    auto const next = Start(*target, "same");
    EXPECT_NE(next, left);
    EXPECT_TRUE(std::filesystem::exists(next / "MetaData"));
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

TEST_F(JobFolderTest, ReadsBackWhatTheDriverMustKnow) {
    using PrintEngine::Printing::JobMetaData;
    JobMetaData const empty, full{.jobName = "n\n",
                                  .totalPages = 9,
                                  .pauseIndices = {3, 9},
                                  .flag = true,
                                  .density = -3,
                                  .pauseAfterJob = true,
                                  .serial = 1ULL << 62,
                                  .firstPage = 4,
                                  .tagOperations = {{1, 2, {{RfidOperation::Write, {{"Bank", "E"}}}}}}};
    EXPECT_EQ(JobMetaData::Parse(empty.Text()), empty);
    EXPECT_EQ(JobMetaData::Parse(full.Text()), full);
    auto const target = Target(1, 1);
    auto const path = target->StartJob("job", 5, {2, 5}, true, full.tagOperations, 7, true);
    auto written = JobMetaData::Read(path).value();
    EXPECT_GT(std::exchange(written.serial, 0), 0U);
    EXPECT_EQ(written, (JobMetaData{.jobName = "job",
                                    .totalPages = 5,
                                    .pauseIndices = {2, 5},
                                    .flag = true,
                                    .density = 7,
                                    .pauseAfterJob = true,
                                    .tagOperations = full.tagOperations}));
}

// The kernel refuses to let a file grow, as a full disk would.
TEST_F(JobFolderTest, NoFolderStaysOfAJobThatCannotBeDescribed) {
    auto const target = Target(1, 1);
    struct rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    struct rlimit const limit{1, before.rlim_max};
    auto const handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    auto const path = Start(*target, "job");
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(path, "");
    EXPECT_NE(target->FileError(), "");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "jobs"));
}

TEST_F(JobFolderTest, FailuresAreTold) {
    auto const target = Target(1, 1);
    target->RenderPage(folder / "missing", 0, true);
    EXPECT_EQ(target->FileError(), "No such file or directory");
    target->RenderPage(folder / "missing", 1, true);
    EXPECT_EQ(warnings.size(), 1u) << "it is told once";
    target->EndJob(folder / "missing");
    EXPECT_EQ(target->FileError(), "No such file or directory");

    std::filesystem::create_directories(folder);
    target->RenderPage(folder, 0, true);
    EXPECT_EQ(target->FileError(), "");
    target->RenderPage(folder / "missing", 2, true);
    EXPECT_EQ(warnings.size(), 2u) << "and again behind a page that could be written";
    std::ofstream(folder / "jobs") << "a file where the folder should be";
    EXPECT_EQ(Start(*target, "job"), "");
    EXPECT_NE(target->FileError(), "");
    // Without a folder nothing is written, least of all where the process happens to stand.
    target->RenderPage({}, 123456, true);
    EXPECT_NE(target->FileError(), "");
    EXPECT_FALSE(std::filesystem::exists("123456"));
}
