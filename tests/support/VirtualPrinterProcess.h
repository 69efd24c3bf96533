#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "foundation/Files.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/TcpClient.h"
#include "tests/support/TemporaryDirectory.h"

inline std::string Label(std::string const& text, unsigned copies = 1) {
    return "^XA^PQ" + std::to_string(copies) + "^FO20,20^A0N,40,40^FD" + text + "^FS^XZ";
}

/// `zpl serve` with its processes, in a folder of its own.
class VirtualPrinterProcess {
public:
    /// Without a folder it has one of its own; a folder that several share is used by one after the other.
    explicit VirtualPrinterProcess(std::vector<std::string> options = {}, std::filesystem::path folder = {})
        : folder_(folder.empty() ? own_.Path() : std::move(folder)) {
        std::error_code ignored;
        std::filesystem::remove(folder_ / "log", ignored);
        std::vector<std::string> words = {ZPL_PROGRAM, "serve",           "--listen", "127.0.0.1:0",
                                          "--state",   folder_ / "state", "--out",    folder_ / "out",
                                          "--size",    "1x1in",           "--no-web"};
        words.insert(words.end(), options.begin(), options.end());
        int toChild[2];
        EXPECT_EQ(::pipe2(toChild, O_CLOEXEC), 0);
        process_ = ::fork();
        if (process_ == 0) {
            ::dup2(toChild[0], 0);
            if (!std::freopen((folder_ / "log").c_str(), "w", stdout)) ::_exit(1);
            ::dup2(1, 2);
            ::setenv("TMPDIR", folder_.c_str(), 1);
            std::vector<char*> list;
            for (auto& word : words) list.push_back(word.data());
            list.push_back(nullptr);
            ::execv(ZPL_PROGRAM, list.data());
            ::_exit(127);
        }
        ::close(toChild[0]);
        terminal_ = toChild[1];
        Until([&] { return Log().find("127.0.0.1:") != std::string::npos; });
        if (auto const at = Log().find("127.0.0.1:"); at != std::string::npos)
            port_ = std::atoi(Log().c_str() + at + 10);
    }
    ~VirtualPrinterProcess() {
        ::close(terminal_);
        if (process_ <= 0) return;
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }

    int End(int signal) {
        int status = -1;
        ::kill(process_, signal);
        ::waitpid(process_, &status, 0);
        process_ = 0;
        return status;
    }
    std::vector<pid_t> Children() const {
        std::vector<pid_t> found;
        std::ifstream children("/proc/" + std::to_string(process_) + "/task/" + std::to_string(process_) + "/children");
        for (pid_t child = 0; children >> child;) found.push_back(child);
        return found;
    }
    /// 0 if there is none of that name.
    pid_t Child(std::string const& name) const {
        for (pid_t const child : Children()) {
            std::string comm;
            std::ifstream("/proc/" + std::to_string(child) + "/comm") >> comm;
            if (comm == name) return child;
        }
        return 0;
    }
    /// Kills a process of the printer, so that it has no say in it.
    void KillChild(std::string const& name) const {
        if (pid_t const child = Child(name)) ::kill(child, SIGKILL);
    }
    /// The most memory that a process has used, in MiB.
    long MostMemory(std::string const& name) const {
        std::ifstream status("/proc/" + std::to_string(Child(name)) + "/status");
        for (std::string word; status >> word;) {
            long kilobytes = 0;
            if (word == "VmHWM:" && status >> kilobytes) return kilobytes / 1024;
        }
        return 0;
    }
    void Type(std::string const& word) {
        std::string const line = word + '\n';
        EXPECT_EQ(::write(terminal_, line.data(), line.size()), static_cast<ssize_t>(line.size()));
    }
    int Connect() const { return ConnectTo(static_cast<unsigned>(port_)); }
    static void Write(int client, std::string const& bytes) {
        EXPECT_EQ(::send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL), static_cast<ssize_t>(bytes.size()));
    }
    void Print(std::string const& stream) const {
        int const client = Connect();
        Write(client, stream);
        ::close(client);
    }

    /// Waits until its log holds a text.
    testing::AssertionResult Says(std::string const& text) const {
        return Until([&] { return Log().find(text) != std::string::npos; }) << Log();
    }
    std::string Log() const { return ReadRegularFile(folder_ / "log"); }
    std::filesystem::path Folder() const { return folder_; }
    /// The folder in which bus and jobs are.
    std::filesystem::path Runtime() const {
        for (auto const& entry : List(folder_)) {
            if (entry.filename().string().starts_with("zpl-serve-")) return entry;
        }
        return {};
    }
    std::vector<std::filesystem::path> Kept() const { return List(folder_ / "out"); }
    std::vector<std::filesystem::path> Jobs() const { return List(Runtime() / "jobs"); }
    /// Page files of all jobs.
    std::size_t Pages() const {
        std::size_t count = 0;
        for (auto const& job : Jobs()) {
            for (auto const& file : List(job)) {
                std::string const name = file.filename().string();
                count += name.find_first_not_of("0123456789") == std::string::npos;
            }
        }
        return count;
    }

    static testing::AssertionResult Until(std::function<bool()> const& holds) {
        return UntilFor(std::chrono::seconds(20 * SanitizerFactor), holds);
    }
    static testing::AssertionResult UntilFor(std::chrono::seconds time, std::function<bool()> const& holds) {
        auto const end = std::chrono::steady_clock::now() + time;
        while (!holds()) {
            if (std::chrono::steady_clock::now() > end)
                return testing::AssertionFailure() << "not within " << time.count() << " seconds";
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return testing::AssertionSuccess();
    }

private:
    static std::vector<std::filesystem::path> List(std::filesystem::path const& folder) {
        std::vector<std::filesystem::path> names;
        std::error_code error;
        for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            if (entry->path().extension() != ".tmp" && entry->path().string().find(".tmp") == std::string::npos)
                names.push_back(entry->path());
        }
        return names;
    }

    TemporaryDirectory own_;
    std::filesystem::path folder_;
    pid_t process_ = 0;
    int terminal_ = -1;
    int port_ = 0;
};
