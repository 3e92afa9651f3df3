#include <gtest/gtest.h>

#include "TestSupport.h"
#include <sys/wait.h>

#include <cstdlib>
#include <vector>

#include "frame/Error.h"
#include "system/Host.h"

namespace qvt {
namespace {

using qvt::test::errorOf;

class HostServices : public ::testing::Test {
protected:
    void SetUp() override {
        setHostLog([this](StringView line) { log_.emplace_back(line); });
    }
    void TearDown() override { setHostLog(nullptr); }
    std::vector<String> log_;
};

TEST_F(HostServices, MessageBoxAnswersItsDefaultButtonAndLogs) {
    EXPECT_EQ(MsgBox(u"Go on?", vbYesNo, u"Tool"), vbYes);
    EXPECT_EQ(MsgBox(u"Go on?", vbYesNo | vbDefaultButton2), vbNo);
    EXPECT_EQ(MsgBox(u"Stop", vbYesNoCancel | vbDefaultButton3), vbCancel);
    EXPECT_EQ(MsgBox(u"Retry?", vbAbortRetryIgnore | vbDefaultButton2), vbRetry);
    EXPECT_EQ(MsgBox(u"Done"), vbOK);
    EXPECT_EQ(MsgBox(u"x", vbOKCancel | vbDefaultButton4), vbCancel);
    ASSERT_EQ(log_.size(), 6u);
    EXPECT_EQ(log_[0], u"MsgBox: Tool: Go on?");
    EXPECT_EQ(log_[4], u"MsgBox: Done");
}

TEST_F(HostServices, InputBoxAnswersItsDefaultText) {
    EXPECT_EQ(InputBox(u"Name?", u"T", u"anon"), u"anon");
    EXPECT_EQ(InputBox(u"Name?"), u"");
    SendKeys(u"{ENTER}");
    Beep();
    EXPECT_EQ(DoEvents(), 0);
    EXPECT_EQ(log_.size(), 4u);
}

TEST_F(HostServices, ClipboardHoldsText) {
    host().clipboardSetText(u"caf\u00e9");
    EXPECT_EQ(host().clipboardGetText(), u"caf\u00e9");
    host().clipboardClear();
    EXPECT_EQ(host().clipboardGetText(), u"");
}

TEST_F(HostServices, EnvironByNameAndIndex) {
    ::setenv("QVT_HOST_TEST", "value", 1);
    EXPECT_EQ(Environ(u"QVT_HOST_TEST"), u"value");
    EXPECT_EQ(Environ(u"QVT_HOST_TEST_UNSET"), u"");
    EXPECT_NE(Environ(1).find(u'='), String::npos);
    EXPECT_EQ(Environ(1000000), u"");
    EXPECT_EQ(errorOf([] { Environ(0); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Environ(u""); }), errInvalidCall);
}

TEST_F(HostServices, ShellStartsWithoutWaiting) {
    const double pid = Shell(u"true \"quoted arg\"", 0);
    EXPECT_GT(pid, 0);
    ::waitpid(static_cast<pid_t>(pid), nullptr, 0);
    EXPECT_EQ(errorOf([] { Shell(u"no-such-program-qvt"); }), errFileNotFound);
    EXPECT_EQ(errorOf([] { Shell(u"true", 9); }), errInvalidCall);
}

class RecordingHost : public Host {
public:
    int32_t msgBox(StringView, int32_t, StringView) override { return vbNo; }
};

TEST_F(HostServices, AnInstalledHostTakesOver) {
    setHost(std::make_unique<RecordingHost>());
    EXPECT_EQ(MsgBox(u"?", vbYesNo), vbNo);
    setHost(nullptr);
    EXPECT_EQ(MsgBox(u"?", vbYesNo), vbYes);
}

}  // namespace
}  // namespace qvt
