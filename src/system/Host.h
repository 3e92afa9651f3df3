// The desktop services of the runtime behind one small interface: Environ,
// Shell, SendKeys, DoEvents, Beep, MsgBox, InputBox and the text clipboard.
//
// The library runs in scripts, tests and servers, so the installed host by
// default never waits for a person:
//   - MsgBox answers with its default button and logs its text;
//   - InputBox answers with its default text and logs the prompt;
//   - SendKeys and Beep only log; DoEvents returns 0 at once;
//   - the clipboard is a text slot inside the process;
//   - Environ reads the process environment;
//   - Shell starts the program without waiting and returns its process id
//     (error 53 when the program cannot be found, 5 for a bad window style).
// Log lines go to the log sink (standard error by default), one line per
// event: "MsgBox: <title>: <prompt>" ("MsgBox: <prompt>" without a title). An application that has a desktop
// installs its own Host with setHost.
#pragma once
#include <functional>
#include <memory>

#include "frame/Variant.h"

namespace qvt {

// MsgBox buttons and answers.
enum MsgBoxValue : int32_t {
    vbOKOnly = 0, vbOKCancel = 1, vbAbortRetryIgnore = 2, vbYesNoCancel = 3, vbYesNo = 4, vbRetryCancel = 5,
    vbDefaultButton1 = 0, vbDefaultButton2 = 256, vbDefaultButton3 = 512, vbDefaultButton4 = 768,
    vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7,
};

class Host {
public:
    virtual ~Host();
    // Environ(name): the value, "" when unset; Environ(n): the n-th
    // "NAME=value" entry (1-based), "" past the end.
    virtual String environ(StringView name);
    virtual String environAt(int32_t index);
    // Starts a command line (program and arguments, double quotes group);
    // returns a task id.
    virtual double shell(StringView commandLine, int32_t windowStyle);
    virtual void sendKeys(StringView keys, bool wait);
    virtual int32_t doEvents();
    virtual void beep();
    virtual int32_t msgBox(StringView prompt, int32_t buttons, StringView title);
    virtual String inputBox(StringView prompt, StringView title, StringView defaultText);
    virtual String clipboardGetText();
    virtual void clipboardSetText(StringView text);
    virtual void clipboardClear();

protected:
    void log(StringView line);

private:
    String clipboard_;
};

// The installed host (a default Host until setHost); setHost(nullptr)
// restores the default.
Host& host();
void setHost(std::unique_ptr<Host> h);
// Where log lines go; nullptr restores standard error.
void setHostLog(std::function<void(StringView)> sink);

// The button a non-interactive MsgBox answers: the default button of the
// button set.
int32_t defaultMsgBoxAnswer(int32_t buttons);

// Basic-named forms over host().
String Environ(StringView name);
String Environ(int32_t index);  // error 5 for index < 1
double Shell(StringView commandLine, int32_t windowStyle = 1);
void SendKeys(StringView keys, bool wait = false);
int32_t DoEvents();
void Beep();
int32_t MsgBox(StringView prompt, int32_t buttons = vbOKOnly, StringView title = {});
String InputBox(StringView prompt, StringView title = {}, StringView defaultText = {});

}  // namespace qvt
