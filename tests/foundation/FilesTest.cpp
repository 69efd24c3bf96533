#include "foundation/Files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <fstream>

#include "tests/support/TemporaryDirectory.h"

namespace {

std::size_t CountEntries(std::filesystem::path const& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

TEST(Files, ReadsBackWhatWasWritten) {
    TemporaryDirectory const folder;
    std::string const content("a\0b\r\n", 5);
    EXPECT_FALSE(WriteFileAtomically(folder / "file", content));
    EXPECT_EQ(ReadRegularFile(folder / "file"), content);
    EXPECT_EQ(CountEntries(folder.Path()), 1U);
}

TEST(Files, AFileThatIsNoneReadsAsEmpty) {
    TemporaryDirectory const folder;
    EXPECT_EQ(ReadRegularFile(folder / "missing"), "");
    EXPECT_EQ(ReadRegularFile(folder.Path()), "");
    std::string content = "left over";
    EXPECT_EQ(ReadFile(folder / "missing", content), std::errc::no_such_file_or_directory);
    EXPECT_EQ(content, "");
}

TEST(Files, AFailedWriteLeavesTheOldFileAndNothingElse) {
    TemporaryDirectory const folder;
    ASSERT_FALSE(WriteFileAtomically(folder / "file", "old"));

    // The kernel refuses to let a file grow past this, as a full disk would.
    struct rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    struct rlimit const limit{1000, before.rlim_max};
    auto const handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::error_code const error = WriteFileAtomically(folder / "file", std::string(5000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(error, std::errc::file_too_large);
    EXPECT_EQ(ReadRegularFile(folder / "file"), "old");
    EXPECT_EQ(CountEntries(folder.Path()), 1U);
    EXPECT_EQ(WriteFileAtomically(folder / "none" / "file", "x"), std::errc::no_such_file_or_directory);
}

}  // namespace
