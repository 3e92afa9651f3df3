// The interactive prompt as a person meets it: qvt on a pseudo-terminal,
// typed at key by key. Also the program's own flags.
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <string>

namespace {

class Prompt {
public:
    Prompt() {
        pid_ = forkpty(&fd_, nullptr, nullptr, nullptr);
        if (pid_ == 0) {
            setenv("TERM", "dumb", 1);
            const std::string qvt = std::string(QVT_BINARY_DIR) + "/qvt";
            execl(qvt.c_str(), "qvt", static_cast<char*>(nullptr));
            _exit(127);
        }
    }
    ~Prompt() {
        if (pid_ > 0 && !reaped_) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
        if (fd_ >= 0) close(fd_);
    }
    bool started() const { return pid_ > 0; }
    void type(const std::string& keys) { ASSERT_EQ(write(fd_, keys.data(), keys.size()), ssize_t(keys.size())); }
    // Everything the terminal shows until `marker` appears (or 5 s pass).
    std::string readUntil(const std::string& marker) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (seen_.find(marker) == std::string::npos && std::chrono::steady_clock::now() < deadline) {
            pollfd p{fd_, POLLIN, 0};
            if (poll(&p, 1, 100) <= 0) continue;
            char buf[4096];
            const ssize_t n = read(fd_, buf, sizeof buf);
            if (n <= 0) break;
            seen_.append(buf, size_t(n));
        }
        const size_t at = seen_.find(marker);
        std::string shown = at == std::string::npos ? seen_ : seen_.substr(0, at + marker.size());
        seen_.erase(0, shown.size());
        return shown;
    }
    // The exit status once the program has ended by itself.
    int exitStatus() {
        int st = 0;
        for (int i = 0; i < 250; ++i) {
            if (waitpid(pid_, &st, WNOHANG) == pid_) {
                reaped_ = true;
                return WIFEXITED(st) ? WEXITSTATUS(st) : -1;
            }
            char buf[4096];
            pollfd p{fd_, POLLIN, 0};
            if (poll(&p, 1, 20) > 0 && read(fd_, buf, sizeof buf) <= 0) usleep(20000);  // drained, or closed
        }
        return -1;
    }

private:
    int fd_ = -1;
    pid_t pid_ = -1;
    bool reaped_ = false;
    std::string seen_;
};

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(HostPrompt, GreetsHelpsAndLeavesOnExit) {
    Prompt p;
    ASSERT_TRUE(p.started());
    const std::string greeting = p.readUntil("qvt> ");
    EXPECT_TRUE(has(greeting, "Quorvane Tools 2.0")) << greeting;
    EXPECT_TRUE(has(greeting, "help")) << greeting;
    p.type("help\r");
    EXPECT_TRUE(has(p.readUntil("qvt> "), "help CLASS.MEMBER")) << "the language page";
    p.type("help Checksums\r");
    EXPECT_TRUE(has(p.readUntil("qvt> "), "Checksum8(vValue: Variant) -> Variant"));
    p.type("help StringSearches.InStrReverse\r");
    EXPECT_TRUE(has(p.readUntil("qvt> "), "vCompare   Variant, optional"));
    // An error names its member and the prompt goes on.
    p.type("CInt(\"x\")\r");
    EXPECT_TRUE(has(p.readUntil("qvt> "), "Run-time error '13': Type mismatch (VBA.CInt)"));
    p.type("? 6 * 7\r");
    EXPECT_TRUE(has(p.readUntil("qvt> "), "42"));
    p.type("exit\r");
    EXPECT_EQ(p.exitStatus(), 1) << "an error escaped a line";
}

TEST(HostPrompt, EndOfInputLeavesQuietly) {
    Prompt p;
    ASSERT_TRUE(p.started());
    p.readUntil("qvt> ");
    p.type("x = 1\r");
    p.readUntil("qvt> ");
    p.type("\x04");  // Ctrl-D on an empty line
    EXPECT_EQ(p.exitStatus(), 0);
}

#ifdef QVT_HAVE_READLINE
TEST(HostPrompt, TabCompletesClassesMembersAndFunctions) {
    Prompt p;
    ASSERT_TRUE(p.started());
    p.readUntil("qvt> ");
    // A unique class name completes without a trailing blank, so "." follows.
    p.type("StringSear\t");
    EXPECT_TRUE(has(p.readUntil("StringSearches"), "StringSearches"));
    p.type(".InStrReverseF\t");
    EXPECT_TRUE(has(p.readUntil("InStrReverseFast"), "InStrReverseFast"));
    p.type("(6, \"abcabc\", \"c\", 0)\r");
    EXPECT_TRUE(has(p.readUntil("qvt> "), "\r\n6\r\n"));
    // A runtime function, case ignored.
    p.type("? strrev\t");
    EXPECT_TRUE(has(p.readUntil("StrReverse"), "StrReverse"));
    p.type("(\"abc\")\r");
    EXPECT_TRUE(has(p.readUntil("qvt> "), "cba"));
    p.type("quit\r");
    EXPECT_EQ(p.exitStatus(), 0);
}
#endif

}  // namespace
