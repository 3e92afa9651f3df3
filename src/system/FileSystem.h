// Basic's file statements and functions: the file-number table (FreeFile,
// Open, Close), sequential text (Line Input, Print #), binary transfer (Get,
// Put, Seek, Loc, LOF, EOF) and the path-level operations (FileLen,
// FileDateTime, GetAttr, Dir, FileCopy, Kill, Name, MkDir, RmDir, CurDir,
// ChDir). Path names are in the DOS form and go through the one mapping of
// system/PathMapping.h.
//
// Text in files is ANSI: one byte per 16-bit unit in the locale's code page
// (Windows-1252), both ways. A line read by Line Input ends at CR or CR LF;
// an LF alone is an ordinary character. Print # ends its text with CR LF.
//
// Failures raise the numbered file errors: 52 bad file name or number,
// 53 file not found, 54 bad file mode, 55 file already open, 57 device I/O
// error, 58 file already exists, 61 disk full, 62 input past end of file,
// 63 bad record number, 67 too many files, 70 permission denied, 71 disk
// not ready (the drive root is missing), 74 rename across disks, 75
// path/file access error, 76 path not found. No operation destroys data when
// it fails: FileCopy writes a temporary file beside the target and renames
// it into place, Output truncates only after every check has passed, and
// Kill checks every matching file before deleting any.
//
// The table, the Dir cursor and the current directory are global to the
// library instance, as Basic's are.
#pragma once
#include <cstdint>
#include <span>

#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

enum : ErrNo {
    errDeviceIO = 57,
    errDiskFull = 61,
    errBadRecordNumber = 63,
    errTooManyFiles = 67,
    errRenameAcrossDisks = 74,
};

// File attribute bits of GetAttr and Dir.
enum FileAttribute : int32_t {
    vbNormal = 0,
    vbReadOnly = 1,
    vbHidden = 2,
    vbSystem = 4,
    vbVolume = 8,
    vbDirectory = 16,
    vbArchive = 32,
};

enum class OpenMode { Input, Output, Append, Binary };
enum class OpenAccess { Default, Read, Write, ReadWrite };
enum class OpenLock { Default, Shared, LockRead, LockWrite, LockReadWrite };

// --- the file-number table
// The lowest free number: 1..255 for range 0, 256..511 for range 1.
// Error 67 when none is free, 5 for another range.
int32_t FreeFile(int32_t range = 0);
// Open path For mode [Access access] [lock] As #fileNumber.
//   Input: the file must exist (53). Output: creates or truncates. Append:
//   creates, writes at the end. Binary: reads and writes at byte positions;
//   without Access it opens read/write, or read-only when the file may not be
//   written. A file may be open under several numbers for Input and Binary;
//   Output and Append need it closed elsewhere (55). A Lock clause denies
//   the locked kinds of access to later opens of the same file (70).
void Open(StringView path, OpenMode mode, OpenAccess access, OpenLock lock, int32_t fileNumber);
// Close #n (an unused number is ignored, as Basic does); CloseAll is Close
// without numbers (and Reset).
void Close(int32_t fileNumber);
void CloseAll() noexcept;
bool isFileNumberOpen(int32_t fileNumber) noexcept;

// --- sequential text
// Line Input #n: the next line without its CR or CR LF; 62 at the end.
String LineInput(int32_t fileNumber);
// Input$(count, #n): count characters (62 past the end).
String InputChars(int32_t fileNumber, int64_t count);
// One item of a Print # list and the separator written after it.
struct PrintItem {
    Variant value;
    char16_t separator = 0;  // u';', u',' (next 14-column zone) or 0
};
// Print #n, items: each value as Print shows it (numbers with a leading
// blank when not negative and a trailing blank, True/False, Null, dates in
// the short form), then CR LF unless the last item has a separator.
void PrintFile(int32_t fileNumber, std::span<const PrintItem> items);
// Writes text as it is (no line end) or a text and CR LF.
void PrintText(int32_t fileNumber, StringView text, bool newline);

// --- binary transfer
// Get #n, [position], variable: the variable's current type decides the
// size: a String reads Len bytes (one unit per byte; units past the end of
// the file become 0), Byte 1, Boolean and Integer 2, Long and Single 4,
// Double, Currency and Date 8, an array its elements in memory order.
// position is 1-based; 0 means the current position. Reading past the end
// is no error: the position moves on and EOF becomes True.
void Get(int32_t fileNumber, int64_t position, Variant& variable);
// Put #n, [position], value: the same layouts; writing past the end extends
// the file.
void Put(int32_t fileNumber, int64_t position, const Variant& value);
// Seek #n, position (1-based, 63 below 1); Seek(n): the next position.
void Seek(int32_t fileNumber, int64_t position);
int64_t Seek(int32_t fileNumber);
// Loc: Binary, the last byte read or written (position - 1); sequential
// modes, the position in 128-byte blocks.
int64_t Loc(int32_t fileNumber);
int64_t LOF(int32_t fileNumber);
// EOF: Input, no more characters; Binary, the last Get ran past the end
// (Loc > LOF); Output and Append, always True.
bool Eof(int32_t fileNumber);

// --- path-level operations
int64_t FileLen(StringView path);
// The last modification, local time, as a Date.
double FileDateTime(StringView path);
int32_t GetAttr(StringView path);
// SetAttr: only vbReadOnly has an effect (the write permission bits).
void SetAttr(StringView path, int32_t attributes);
// Dir(pattern, attributes): the first matching name (without its path), ""
// when none; Dir() the next, "" at the end, error 5 with no listing under
// way. Wildcards * and ? in the last component, matched without regard to
// case; "*.*" matches every name. Directories only with vbDirectory
// (including "." and ".."), hidden names (starting with ".") only with
// vbHidden. Names come in case-insensitive order.
String Dir(StringView pattern, int32_t attributes = vbNormal);
String Dir();
void FileCopy(StringView source, StringView destination);
// Kill: one file or every file matching a wildcard pattern (53 when none).
void Kill(StringView pattern);
// Name oldPath As newPath: rename or move within one drive (58 when the new
// name exists, 74 across file systems).
void Name(StringView oldPath, StringView newPath);
void MkDir(StringView path);
void RmDir(StringView path);
// CurDir$[(drive)]: the current directory in the DOS form (every drive
// shares it).
String CurDir(StringView drive = {});
void ChDir(StringView path);

}  // namespace qvt
