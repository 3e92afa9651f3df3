// The runtime's Format$, dates, random numbers, files and host services,
// registered under Basic's library name beside the value-model operations
// (RuntimeLibrary.cpp), so that clients call them unqualified.
//
// The file statements take a function-call form, since a script line has no
// "#n" syntax:
//   Open path For Input Access Read Shared As #1
//       -> Open path, "Input", 1, "Read", "Shared"
//   Close #1, #2 -> Close 1, 2          Close -> Close
//   Line Input #1, s -> s = LineInput(1)
//   Print #1, a; b, -> PrintFile 1, a, ";", b, ","   (each value, then its
//       separator: ";" none, "," the next 14-column zone, "" or nothing:
//       end of line)
//   Get #1, pos, v -> Get 1, pos, v      Put #1, , v -> Put 1, , v
//   Seek #1, pos -> SeekTo 1, pos       (Seek(1) is the function)
//   Name a As b -> Name a, b
#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/DateFunctions.h"
#include "frame/Format.h"
#include "frame/Random.h"
#include "system/FileSystem.h"
#include "system/Host.h"

namespace qvt {

namespace {

using V = Variant;

const String& str(const Variant& v) { return v.asString(); }
int32_t lng(const Variant& v) { return v.asLong(); }

String foldWord(StringView s) {
    String out;
    bool blank = false;
    for (char16_t c : s) {
        if (c == u' ' || c == u'\t') {
            blank = !out.empty();
            continue;
        }
        if (blank) out += u' ';
        blank = false;
        out += (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c;
    }
    return out;
}

OpenMode modeOf(StringView text) {
    const String w = foldWord(text);
    if (w == u"input") return OpenMode::Input;
    if (w == u"output") return OpenMode::Output;
    if (w == u"append") return OpenMode::Append;
    if (w == u"binary") return OpenMode::Binary;
    raiseError(errBadFileMode);
}

OpenAccess accessOf(StringView text) {
    String w = foldWord(text);
    if (w.rfind(u"access ", 0) == 0) w.erase(0, 7);
    if (w.empty()) return OpenAccess::Default;
    if (w == u"read") return OpenAccess::Read;
    if (w == u"write") return OpenAccess::Write;
    if (w == u"read write") return OpenAccess::ReadWrite;
    raiseError(errInvalidCall);
}

OpenLock lockOf(StringView text) {
    String w = foldWord(text);
    if (w.empty()) return OpenLock::Default;
    if (w == u"shared") return OpenLock::Shared;
    if (w.rfind(u"lock ", 0) == 0) w.erase(0, 5);
    if (w == u"read") return OpenLock::LockRead;
    if (w == u"write") return OpenLock::LockWrite;
    if (w == u"read write") return OpenLock::LockReadWrite;
    raiseError(errInvalidCall);
}

int64_t positionArg(const Variant& v) {
    if (v.isMissing() || v.isEmpty()) return 0;
    const double d = CDbl(v);
    if (d < 1) raiseError(errBadRecordNumber);
    return static_cast<int64_t>(d);
}

String textArg(const Variant& v) { return v.isMissing() ? String() : CStr(v); }

Variant formatCall(Call& c, bool dollar) {
    const String pattern = c[1].isMissing() ? String() : CStr(c[1]);
    if (dollar) return V(FormatText(c[0], pattern, lng(c[2]), lng(c[3])));
    return Format(c[0], pattern, lng(c[2]), lng(c[3]));
}

Variant environCall(const Variant& v) {
    if (v.isString()) return V(Environ(v.asString()));
    return V(Environ(CLng(v)));
}

// Print #n items: value, separator, value, separator, ...
Variant printFile(Call& c) {
    std::vector<PrintItem> items;
    const auto elems = c[1].asArray().elements();
    for (size_t i = 0; i < elems.size(); i += 2) {
        PrintItem item;
        item.value = elems[i];
        if (i + 1 < elems.size() && !elems[i + 1].isMissing()) {
            const String sep = CStr(elems[i + 1]);
            if (sep == u";") item.separator = u';';
            else if (sep == u",") item.separator = u',';
            else if (!sep.empty()) raiseError(errInvalidCall);
        }
        items.push_back(std::move(item));
    }
    PrintFile(lng(c[0]), items);
    return V();
}

class ClipboardObject : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ClipboardObject"; }
};

const ClassRegistration kClipboard(u"ClipboardObject", ClassKind::Noncreatable, nullptr,
    u"The host's clipboard, as text.", {
    {"GetText([Format: Variant]) -> String", [](Call&) { return V(host().clipboardGetText()); }},
    {"SetText(Str: String, [Format: Variant])", [](Call& c) { host().clipboardSetText(str(c[0])); return V(); }},
    {"Clear()", [](Call&) { host().clipboardClear(); return V(); }},
});

V longConst(int32_t n) { return V(n); }

const ClassRegistration kRuntimeSystem(kRuntimeClassName, ClassKind::Runtime, nullptr, {
    // Format
    {"Format(Expression: Variant, [Format: Variant], [FirstDayOfWeek: Long = 1], [FirstWeekOfYear: Long = 1]) -> Variant",
     [](Call& c) { return formatCall(c, false); }},
    {"Format$(Expression: Variant, [Format: Variant], [FirstDayOfWeek: Long = 1], [FirstWeekOfYear: Long = 1]) -> String",
     [](Call& c) { return formatCall(c, true); }},

    // Dates
    {"Now() -> Date", [](Call&) { return Now(); }},
    {"Date() -> Date", [](Call&) { return Date(); }},
    {"Date$() -> String", [](Call&) { return V(DateText()); }},
    {"Time() -> Date", [](Call&) { return Time(); }},
    {"Time$() -> String", [](Call&) { return V(TimeText()); }},
    {"Timer() -> Single", [](Call&) { return V(Timer()); }},
    {"DateSerial(Year: Integer, Month: Integer, Day: Integer) -> Date",
     [](Call& c) { return DateSerial(c[0], c[1], c[2]); }},
    {"TimeSerial(Hour: Integer, Minute: Integer, Second: Integer) -> Date",
     [](Call& c) { return TimeSerial(c[0], c[1], c[2]); }},
    {"DateValue(Date: Variant) -> Variant", [](Call& c) { return DateValue(c[0]); }},
    {"TimeValue(Time: Variant) -> Variant", [](Call& c) { return TimeValue(c[0]); }},
    {"Year(Date: Variant) -> Variant", [](Call& c) { return Year(c[0]); }},
    {"Month(Date: Variant) -> Variant", [](Call& c) { return Month(c[0]); }},
    {"Day(Date: Variant) -> Variant", [](Call& c) { return Day(c[0]); }},
    {"Hour(Time: Variant) -> Variant", [](Call& c) { return Hour(c[0]); }},
    {"Minute(Time: Variant) -> Variant", [](Call& c) { return Minute(c[0]); }},
    {"Second(Time: Variant) -> Variant", [](Call& c) { return Second(c[0]); }},
    {"Weekday(Date: Variant, [FirstDayOfWeek: Long = 1]) -> Variant",
     [](Call& c) { return Weekday(c[0], lng(c[1])); }},
    {"DateAdd(Interval: String, Number: Double, Date: Variant) -> Variant",
     [](Call& c) { return DateAdd(str(c[0]), c[1], c[2]); }},
    {"DateDiff(Interval: String, Date1: Variant, Date2: Variant, [FirstDayOfWeek: Long = 1], "
     "[FirstWeekOfYear: Long = 1]) -> Variant",
     [](Call& c) { return DateDiff(str(c[0]), c[1], c[2], lng(c[3]), lng(c[4])); }},
    {"DatePart(Interval: String, Date: Variant, [FirstDayOfWeek: Long = 1], [FirstWeekOfYear: Long = 1]) -> Variant",
     [](Call& c) { return DatePart(str(c[0]), c[1], lng(c[2]), lng(c[3])); }},

    // Random numbers
    {"Rnd([Number: Variant]) -> Single", [](Call& c) { return V(c[0].isMissing() ? Rnd() : Rnd(CSng(c[0]))); }},
    {"Randomize([Number: Variant])", [](Call& c) {
        if (c[0].isMissing()) Randomize();
        else Randomize(CDbl(c[0]));
        return V(); }},

    // The file-number table and file statements
    {"FreeFile([RangeNumber: Variant]) -> Integer", [](Call& c) {
        return V(static_cast<int16_t>(FreeFile(c[0].isMissing() ? 0 : CLng(c[0])))); }},
    {"Open(PathName: String, Mode: String, FileNumber: Long, [Access: String = \"\"], [Lock: String = \"\"])",
     [](Call& c) {
        Open(str(c[0]), modeOf(str(c[1])), accessOf(str(c[3])), lockOf(str(c[4])), lng(c[2]));
        return V(); }},
    {"Close(ref FileNumbers: array of Variant)", [](Call& c) {
        const auto numbers = c[0].asArray().elements();
        if (numbers.empty()) CloseAll();
        for (const Variant& n : numbers) Close(CLng(n));
        return V(); }},
    {"Reset()", [](Call&) { CloseAll(); return V(); }},
    {"LineInput(FileNumber: Long) -> String", [](Call& c) { return V(LineInput(lng(c[0]))); }},
    {"Input(Number: Long, FileNumber: Long) -> Variant", [](Call& c) { return V(InputChars(lng(c[1]), lng(c[0]))); }},
    {"Input$(Number: Long, FileNumber: Long) -> String", [](Call& c) { return V(InputChars(lng(c[1]), lng(c[0]))); }},
    {"PrintFile(FileNumber: Long, ref Items: array of Variant)", printFile},
    {"Get(FileNumber: Long, Position: Variant, ref VarName: Variant)", [](Call& c) {
        Get(lng(c[0]), positionArg(c[1]), c[2]);
        return V(); }},
    {"Put(FileNumber: Long, Position: Variant, VarName: Variant)", [](Call& c) {
        Put(lng(c[0]), positionArg(c[1]), c[2]);
        return V(); }},
    {"Seek(FileNumber: Long) -> Long", [](Call& c) { return V(static_cast<int32_t>(Seek(lng(c[0])))); }},
    {"SeekTo(FileNumber: Long, Position: Long)", [](Call& c) { Seek(lng(c[0]), lng(c[1])); return V(); }},
    {"EOF(FileNumber: Long) -> Boolean", [](Call& c) { return V(Eof(lng(c[0]))); }},
    {"LOF(FileNumber: Long) -> Long", [](Call& c) { return V(static_cast<int32_t>(LOF(lng(c[0])))); }},
    {"Loc(FileNumber: Long) -> Long", [](Call& c) { return V(static_cast<int32_t>(Loc(lng(c[0])))); }},

    // Files and directories by name
    {"FileLen(PathName: String) -> Long", [](Call& c) { return V(static_cast<int32_t>(FileLen(str(c[0])))); }},
    {"FileDateTime(PathName: String) -> Date", [](Call& c) { return V::date(FileDateTime(str(c[0]))); }},
    {"GetAttr(PathName: String) -> Integer", [](Call& c) { return V(static_cast<int16_t>(GetAttr(str(c[0])))); }},
    {"SetAttr(PathName: String, Attributes: Integer)", [](Call& c) {
        SetAttr(str(c[0]), c[1].asInteger());
        return V(); }},
    {"Dir([PathName: Variant], [Attributes: Long = 0]) -> String", [](Call& c) {
        return V(c[0].isMissing() ? Dir() : Dir(CStr(c[0]), lng(c[1]))); }},
    {"Dir$([PathName: Variant], [Attributes: Long = 0]) -> String", [](Call& c) {
        return V(c[0].isMissing() ? Dir() : Dir(CStr(c[0]), lng(c[1]))); }},
    {"FileCopy(Source: String, Destination: String)", [](Call& c) { FileCopy(str(c[0]), str(c[1])); return V(); }},
    {"Kill(PathName: String)", [](Call& c) { Kill(str(c[0])); return V(); }},
    {"Name(OldPathName: String, NewPathName: String)", [](Call& c) { Name(str(c[0]), str(c[1])); return V(); }},
    {"MkDir(Path: String)", [](Call& c) { MkDir(str(c[0])); return V(); }},
    {"RmDir(Path: String)", [](Call& c) { RmDir(str(c[0])); return V(); }},
    {"ChDir(Path: String)", [](Call& c) { ChDir(str(c[0])); return V(); }},
    {"CurDir([Drive: Variant]) -> Variant", [](Call& c) { return V(CurDir(textArg(c[0]))); }},
    {"CurDir$([Drive: Variant]) -> String", [](Call& c) { return V(CurDir(textArg(c[0]))); }},

    // Host services
    {"Environ(Expression: Variant) -> Variant", [](Call& c) { return environCall(c[0]); }},
    {"Environ$(Expression: Variant) -> String", [](Call& c) { return environCall(c[0]); }},
    {"Shell(PathName: String, [WindowStyle: Long = 1]) -> Double",
     [](Call& c) { return V(Shell(str(c[0]), lng(c[1]))); }},
    {"SendKeys(String: String, [Wait: Boolean = False])", [](Call& c) {
        SendKeys(str(c[0]), c[1].asBoolean());
        return V(); }},
    {"DoEvents() -> Integer", [](Call&) { return V(static_cast<int16_t>(DoEvents())); }},
    {"Beep()", [](Call&) { Beep(); return V(); }},
    {"MsgBox(Prompt: Variant, [Buttons: Long = 0], [Title: Variant]) -> Integer", [](Call& c) {
        return V(static_cast<int16_t>(MsgBox(CStr(c[0]), lng(c[1]), textArg(c[2])))); }},
    {"InputBox(Prompt: Variant, [Title: Variant], [Default: Variant]) -> String", [](Call& c) {
        return V(InputBox(CStr(c[0]), textArg(c[1]), textArg(c[2]))); }},
    {"Property Get Clipboard -> Object", [](Call&) {
        static Variant handle(static_cast<Object*>(new ClipboardObject()));
        return handle; }},

    // Constants
    {"Property Get vbNormal -> Long", [](Call&) { return longConst(vbNormal); }},
    {"Property Get vbReadOnly -> Long", [](Call&) { return longConst(vbReadOnly); }},
    {"Property Get vbHidden -> Long", [](Call&) { return longConst(vbHidden); }},
    {"Property Get vbSystem -> Long", [](Call&) { return longConst(vbSystem); }},
    {"Property Get vbVolume -> Long", [](Call&) { return longConst(vbVolume); }},
    {"Property Get vbDirectory -> Long", [](Call&) { return longConst(vbDirectory); }},
    {"Property Get vbArchive -> Long", [](Call&) { return longConst(vbArchive); }},
    {"Property Get vbUseSystemDayOfWeek -> Long", [](Call&) { return longConst(0); }},
    {"Property Get vbSunday -> Long", [](Call&) { return longConst(1); }},
    {"Property Get vbMonday -> Long", [](Call&) { return longConst(2); }},
    {"Property Get vbSaturday -> Long", [](Call&) { return longConst(7); }},
    {"Property Get vbFirstJan1 -> Long", [](Call&) { return longConst(vbFirstJan1); }},
    {"Property Get vbFirstFourDays -> Long", [](Call&) { return longConst(vbFirstFourDays); }},
    {"Property Get vbFirstFullWeek -> Long", [](Call&) { return longConst(vbFirstFullWeek); }},
    {"Property Get vbOKOnly -> Long", [](Call&) { return longConst(vbOKOnly); }},
    {"Property Get vbOKCancel -> Long", [](Call&) { return longConst(vbOKCancel); }},
    {"Property Get vbYesNoCancel -> Long", [](Call&) { return longConst(vbYesNoCancel); }},
    {"Property Get vbYesNo -> Long", [](Call&) { return longConst(vbYesNo); }},
    {"Property Get vbDefaultButton2 -> Long", [](Call&) { return longConst(vbDefaultButton2); }},
    {"Property Get vbOK -> Long", [](Call&) { return longConst(vbOK); }},
    {"Property Get vbCancel -> Long", [](Call&) { return longConst(vbCancel); }},
    {"Property Get vbYes -> Long", [](Call&) { return longConst(vbYes); }},
    {"Property Get vbNo -> Long", [](Call&) { return longConst(vbNo); }},
    {"Property Get vbHide -> Long", [](Call&) { return longConst(0); }},
    {"Property Get vbNormalFocus -> Long", [](Call&) { return longConst(1); }},
});

}  // namespace

}  // namespace qvt
