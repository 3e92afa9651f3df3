#include "system/FileSystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "frame/Conversions.h"
#include "frame/DateMath.h"
#include "frame/Locale.h"
#include "frame/Strings.h"
#include "system/PathMapping.h"

namespace qvt {

namespace {

constexpr int32_t kMaxFileNumber = 511;
constexpr size_t kWriteBufferLimit = 64 * 1024;
constexpr size_t kReadChunk = 64 * 1024;

// ---------------------------------------------------------------- errors

bool isDirectory(const std::string& p) {
    struct stat st;
    return ::stat(p.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::string parentOf(const std::string& p) {
    const size_t slash = p.find_last_of('/');
    if (slash == std::string::npos) return ".";
    if (slash == 0) return "/";
    return p.substr(0, slash);
}

// The Basic error for a failed system call on path.
ErrNo errorFor(int e, const std::string& path) {
    switch (e) {
        case ENOENT: return isDirectory(parentOf(path)) ? errFileNotFound : errPathNotFound;
        case ENOTDIR: return errPathNotFound;
        case EEXIST: return errFileAlreadyExists;
        case ENOSPC:
        case EDQUOT: return errDiskFull;
        case EMFILE:
        case ENFILE: return errTooManyFiles;
        case EXDEV: return errRenameAcrossDisks;
        case EIO: return errDeviceIO;
        case ENAMETOOLONG: return errBadFileNameOrNumber;
        default: return errPathFileAccess;  // EACCES, EPERM, EROFS, EISDIR, EBUSY, ...
    }
}

[[noreturn]] void raiseFor(int e, const std::string& path) { raiseError(errorFor(e, path)); }

bool hasWildcard(StringView s) { return s.find_first_of(u"*?") != StringView::npos; }

bool startsWithDrive(StringView p) {
    return p.size() >= 2 && p[1] == u':' && ((p[0] >= u'A' && p[0] <= u'Z') || (p[0] >= u'a' && p[0] <= u'z'));
}

// Maps a path name that must be a plain name (no wildcards): 52 when empty
// or wild, 71 when it names a drive whose root is missing.
std::string mapName(StringView path) {
    if (path.empty() || hasWildcard(path)) raiseError(errBadFileNameOrNumber);
    if ((startsWithDrive(path) || path[0] == u'\\') && !isDirectory(driveRoot())) raiseError(errDiskNotReady);
    return mapPath(path);
}

// ---------------------------------------------------------------- the table

struct OpenFile {
    int fd = -1;
    OpenMode mode = OpenMode::Input;
    bool canRead = false;
    bool canWrite = false;
    OpenLock lock = OpenLock::Default;
    dev_t dev = 0;
    ino_t ino = 0;
    std::string path;
    int64_t pos = 0;  // 0-based offset of the next byte
    // Output and Append: bytes not yet written, which belong at wstart.
    std::string wbuf;
    int64_t wstart = 0;
    // Input: bytes read ahead, starting at rstart.
    std::string rbuf;
    int64_t rstart = 0;
    int64_t column = 0;  // Print # column, for comma zones
};

std::array<std::unique_ptr<OpenFile>, kMaxFileNumber + 1> gFiles;

void flush(OpenFile& f) {
    size_t done = 0;
    while (done < f.wbuf.size()) {
        const ssize_t n = ::pwrite(f.fd, f.wbuf.data() + done, f.wbuf.size() - done, f.wstart + int64_t(done));
        if (n < 0) {
            if (errno == EINTR) continue;
            const int e = errno;
            f.wbuf.erase(0, done);
            f.wstart += int64_t(done);
            raiseFor(e, f.path);
        }
        done += size_t(n);
    }
    f.wbuf.clear();
    f.wstart = f.pos;
}

OpenFile& fileFor(int32_t n) {
    if (n < 1 || n > kMaxFileNumber || !gFiles[size_t(n)]) raiseError(errBadFileNameOrNumber);
    return *gFiles[size_t(n)];
}

void flushAll() {
    for (auto& f : gFiles)
        if (f && !f->wbuf.empty()) flush(*f);
}

bool locksOut(OpenLock lock, bool read, bool write) {
    return ((lock == OpenLock::LockRead || lock == OpenLock::LockReadWrite) && read) ||
           ((lock == OpenLock::LockWrite || lock == OpenLock::LockReadWrite) && write);
}

// The open entries of one file (by device and inode).
template <class F>
void forEachOpen(dev_t dev, ino_t ino, F&& f) {
    for (auto& e : gFiles)
        if (e && e->dev == dev && e->ino == ino) f(*e);
}

bool isOpen(const struct stat& st) {
    bool any = false;
    forEachOpen(st.st_dev, st.st_ino, [&](OpenFile&) { any = true; });
    return any;
}

bool isOpenForWriting(const struct stat& st) {
    bool any = false;
    forEachOpen(st.st_dev, st.st_ino, [&](OpenFile& f) { any = any || f.canWrite; });
    return any;
}

int64_t fileSize(const OpenFile& f) {
    struct stat st;
    if (::fstat(f.fd, &st) != 0) raiseFor(errno, f.path);
    return std::max<int64_t>(st.st_size, f.wbuf.empty() ? 0 : f.wstart + int64_t(f.wbuf.size()));
}

// Reads up to n bytes at offset from the file (through the pending writes).
std::string readAt(OpenFile& f, int64_t offset, size_t n) {
    if (!f.wbuf.empty()) flush(f);
    std::string out(n, '\0');
    size_t got = 0;
    while (got < n) {
        const ssize_t r = ::pread(f.fd, out.data() + got, n - got, offset + int64_t(got));
        if (r < 0) {
            if (errno == EINTR) continue;
            raiseFor(errno, f.path);
        }
        if (r == 0) break;
        got += size_t(r);
    }
    out.resize(got);
    return out;
}

void writeAt(OpenFile& f, int64_t offset, const std::string& bytes) {
    if (!f.wbuf.empty() && f.wstart + int64_t(f.wbuf.size()) != offset) flush(f);
    if (f.wbuf.empty()) f.wstart = offset;
    f.wbuf += bytes;
    if (f.wbuf.size() >= kWriteBufferLimit || f.mode == OpenMode::Binary) flush(f);
}

// Input mode: the byte at f.pos, or -1 at the end.
int peekByte(OpenFile& f) {
    if (f.pos < f.rstart || f.pos >= f.rstart + int64_t(f.rbuf.size())) {
        f.rbuf = readAt(f, f.pos, kReadChunk);
        f.rstart = f.pos;
        if (f.rbuf.empty()) return -1;
    }
    return static_cast<unsigned char>(f.rbuf[size_t(f.pos - f.rstart)]);
}

String ansiToString(const std::string& bytes) {
    String s(bytes.size(), u'\0');
    for (size_t i = 0; i < bytes.size(); ++i) s[i] = ansiToUnicode(static_cast<uint8_t>(bytes[i]));
    return s;
}

std::string stringToAnsi(StringView s) {
    std::string b(s.size(), '\0');
    for (size_t i = 0; i < s.size(); ++i) b[i] = static_cast<char>(unicodeToAnsi(s[i]));
    return b;
}

// ---------------------------------------------------------------- Dir

struct DirCursor {
    bool active = false;
    std::vector<String> names;
    size_t next = 0;
};
DirCursor gDir;

// A DOS wildcard pattern (* any run, ? one character) as a Like pattern:
// the characters Like treats specially but a file name may hold are put in
// brackets, so the runtime's one matcher serves.
String likePatternOf(StringView dosPattern) {
    String out;
    out.reserve(dosPattern.size());
    for (char16_t c : dosPattern) {
        if (c == u'#' || c == u'[') {
            out += u'[';
            out += c;
            out += u']';
        } else {
            out += c;
        }
    }
    return out;
}

// A name without an extension also matches as if it ended in "." (so "*.*"
// and "*." take it, as DOS does). Names match without regard to case.
bool dosMatch(StringView name, StringView likePattern) {
    if (Like(name, likePattern, vbTextCompare)) return true;
    if (name.find(u'.') != StringView::npos) return false;
    String dotted(name);
    dotted += u'.';
    return Like(dotted, likePattern, vbTextCompare);
}

int32_t attributesOf(const struct stat& st, const std::string& name) {
    int32_t a = vbNormal;
    if (S_ISDIR(st.st_mode)) a |= vbDirectory;
    if (!(st.st_mode & S_IWUSR)) a |= vbReadOnly;
    if (name.size() > 1 && name[0] == '.' && name != "..") a |= vbHidden;
    return a;
}

bool admitted(int32_t attrs, int32_t wanted) {
    return (attrs & ~wanted & (vbHidden | vbSystem | vbDirectory)) == 0;
}

// Splits a DOS pattern into its directory part (kept in DOS form) and its
// last component.
void splitPattern(StringView pattern, String& dir, String& last) {
    size_t cut = pattern.find_last_of(u"\\/");
    if (cut == StringView::npos && startsWithDrive(pattern)) cut = 1;
    if (cut == StringView::npos) {
        dir.clear();
        last = String(pattern);
    } else {
        dir = String(pattern.substr(0, cut + 1));
        last = String(pattern.substr(cut + 1));
    }
}

std::string mapDirectory(const String& dosDir) { return dosDir.empty() ? std::string(".") : mapPath(dosDir); }

struct Entry {
    std::string native;  // full path
    std::string name;    // as stored
    struct stat st;
};

// The entries of a directory whose names match a DOS pattern.
std::vector<Entry> matchingEntries(const std::string& dir, StringView pattern) {
    std::vector<Entry> out;
    DIR* d = ::opendir(dir.c_str());
    if (!d) return out;
    const String like = likePatternOf(pattern);
    while (dirent* e = ::readdir(d)) {
        const std::string name = e->d_name;
        if (!dosMatch(fromNativeName(name), like)) continue;
        Entry en;
        en.native = dir == "/" ? "/" + name : dir + "/" + name;
        en.name = name;
        if (::stat(en.native.c_str(), &en.st) != 0 && ::lstat(en.native.c_str(), &en.st) != 0) continue;
        out.push_back(std::move(en));
    }
    ::closedir(d);
    std::sort(out.begin(), out.end(), [](const Entry& a, const Entry& b) {
        const String x = fromNativeName(a.name), y = fromNativeName(b.name);
        const size_t n = std::min(x.size(), y.size());
        for (size_t i = 0; i < n; ++i) {
            const char16_t p = textCompareKey(x[i]), q = textCompareKey(y[i]);
            if (p != q) return p < q;
        }
        return x.size() != y.size() ? x.size() < y.size() : x < y;
    });
    return out;
}

String lastComponent(const std::string& native) {
    const size_t slash = native.find_last_of('/');
    return fromNativeName(slash == std::string::npos ? native : native.substr(slash + 1));
}

void copyFileContents(int in, int out, const std::string& from, const std::string& to) {
    std::vector<char> buf(256 * 1024);
    for (;;) {
        const ssize_t r = ::read(in, buf.data(), buf.size());
        if (r < 0) {
            if (errno == EINTR) continue;
            raiseFor(errno, from);
        }
        if (r == 0) return;
        ssize_t done = 0;
        while (done < r) {
            const ssize_t w = ::write(out, buf.data() + done, size_t(r - done));
            if (w < 0) {
                if (errno == EINTR) continue;
                raiseFor(errno, to);
            }
            done += w;
        }
    }
}

// Closes a descriptor when it leaves scope.
struct Fd {
    int fd = -1;
    ~Fd() {
        if (fd >= 0) ::close(fd);
    }
};

}  // namespace

// ================================================================== table

int32_t FreeFile(int32_t range) {
    if (range != 0 && range != 1) raiseError(errInvalidCall);
    const int32_t first = range == 0 ? 1 : 256, last = range == 0 ? 255 : 511;
    for (int32_t n = first; n <= last; ++n)
        if (!gFiles[size_t(n)]) return n;
    raiseError(errTooManyFiles);
}

bool isFileNumberOpen(int32_t n) noexcept { return n >= 1 && n <= kMaxFileNumber && gFiles[size_t(n)] != nullptr; }

void Open(StringView path, OpenMode mode, OpenAccess access, OpenLock lock, int32_t n) {
    if (n < 1 || n > kMaxFileNumber) raiseError(errBadFileNameOrNumber);
    if (gFiles[size_t(n)]) raiseError(errFileAlreadyOpen);
    const std::string native = mapName(path);

    bool read = false, write = false;
    switch (mode) {
        case OpenMode::Input:
            if (access == OpenAccess::Write || access == OpenAccess::ReadWrite) raiseError(errBadFileMode);
            read = true;
            break;
        case OpenMode::Output:
        case OpenMode::Append:
            if (access == OpenAccess::Read) raiseError(errBadFileMode);
            write = true;
            read = access == OpenAccess::ReadWrite;
            break;
        case OpenMode::Binary:
            read = access != OpenAccess::Write;
            write = access != OpenAccess::Read;
            break;
    }

    struct stat st;
    const bool exists = ::stat(native.c_str(), &st) == 0;
    if (exists && S_ISDIR(st.st_mode)) raiseError(errPathFileAccess);
    if (!exists && errno != ENOENT) raiseFor(errno, native);
    if (!exists && !isDirectory(parentOf(native))) raiseError(errPathNotFound);
    if (!exists && mode == OpenMode::Input) raiseError(errFileNotFound);
    if (!exists && mode == OpenMode::Binary && !write) raiseError(errFileNotFound);

    if (exists) {
        const bool sequentialWrite = mode == OpenMode::Output || mode == OpenMode::Append;
        forEachOpen(st.st_dev, st.st_ino, [&](OpenFile& other) {
            const bool otherSequentialWrite = other.mode == OpenMode::Output || other.mode == OpenMode::Append;
            if (sequentialWrite || otherSequentialWrite) raiseError(errFileAlreadyOpen);
            if (locksOut(other.lock, read, write) || locksOut(lock, other.canRead, other.canWrite))
                raiseError(errPermissionDenied);
        });
    }

    int flags = O_CLOEXEC;
    if (read && write) flags |= O_RDWR;
    else if (write) flags |= O_WRONLY;
    else flags |= O_RDONLY;
    if (write) flags |= O_CREAT;
    if (mode == OpenMode::Output) flags |= O_TRUNC;

    int fd = ::open(native.c_str(), flags, 0666);
    if (fd < 0 && (errno == EACCES || errno == EROFS) && mode == OpenMode::Binary && access == OpenAccess::Default &&
        exists) {
        // Binary without Access falls back to read-only, as Basic does.
        write = false;
        fd = ::open(native.c_str(), O_RDONLY | O_CLOEXEC);
    }
    if (fd < 0) raiseFor(errno, native);

    auto f = std::make_unique<OpenFile>();
    f->fd = fd;
    f->mode = mode;
    f->canRead = read;
    f->canWrite = write;
    f->lock = lock;
    f->path = native;
    struct stat now;
    if (::fstat(fd, &now) == 0) {
        f->dev = now.st_dev;
        f->ino = now.st_ino;
        if (mode == OpenMode::Append) f->pos = now.st_size;
    }
    f->wstart = f->pos;
    gFiles[size_t(n)] = std::move(f);
}

void Close(int32_t n) {
    if (n < 1 || n > kMaxFileNumber) raiseError(errBadFileNameOrNumber);
    std::unique_ptr<OpenFile> f = std::move(gFiles[size_t(n)]);
    if (!f) return;
    ErrNo failed = 0;
    try {
        flush(*f);
    } catch (const RuntimeError& e) {
        failed = e.number();
    }
    ::close(f->fd);
    if (failed) raiseError(failed);
}

void CloseAll() noexcept {
    for (int32_t n = 1; n <= kMaxFileNumber; ++n) {
        if (!gFiles[size_t(n)]) continue;
        try {
            Close(n);
        } catch (const RuntimeError&) {
        }
    }
}

// ================================================================== text

String LineInput(int32_t n) {
    OpenFile& f = fileFor(n);
    if (f.mode != OpenMode::Input) raiseError(errBadFileMode);
    int b = peekByte(f);
    if (b < 0) raiseError(errInputPastEnd);
    std::string line;
    while (b >= 0 && b != '\r') {
        line += static_cast<char>(b);
        ++f.pos;
        b = peekByte(f);
    }
    if (b == '\r') {
        ++f.pos;
        if (peekByte(f) == '\n') ++f.pos;
    }
    return ansiToString(line);
}

String InputChars(int32_t n, int64_t count) {
    OpenFile& f = fileFor(n);
    if (count < 0) raiseError(errInvalidCall);
    if (f.mode == OpenMode::Output || f.mode == OpenMode::Append) raiseError(errBadFileMode);
    const std::string bytes = readAt(f, f.pos, size_t(count));
    if (int64_t(bytes.size()) < count) raiseError(errInputPastEnd);
    f.pos += count;
    return ansiToString(bytes);
}

void PrintText(int32_t n, StringView text, bool newline) {
    OpenFile& f = fileFor(n);
    if (f.mode == OpenMode::Input) raiseError(errBadFileMode);
    if (!f.canWrite) raiseError(errPathFileAccess);
    std::string bytes = stringToAnsi(text);
    f.column += int64_t(text.size());
    if (newline) {
        bytes += "\r\n";
        f.column = 0;
    }
    writeAt(f, f.pos, bytes);
    f.pos += int64_t(bytes.size());
}

void PrintFile(int32_t n, std::span<const PrintItem> items) {
    OpenFile& f = fileFor(n);
    if (f.mode == OpenMode::Input) raiseError(errBadFileMode);
    for (const PrintItem& item : items) {
        const Variant& v = item.value;
        String text;
        if (v.isNull()) {
            text = u"Null";
        } else if (v.isNumberType() && v.vt() != vbBoolean) {
            text = CStr(v);
            if (text.empty() || text[0] != u'-') text.insert(text.begin(), u' ');
            text += u' ';
        } else if (!v.isEmpty() && !v.isMissing()) {
            text = CStr(v);
        }
        PrintText(n, text, false);
        if (item.separator == u',') {
            const int64_t pad = 14 - f.column % 14;
            PrintText(n, String(size_t(pad), u' '), false);
        }
    }
    if (items.empty() || items.back().separator == 0) PrintText(n, u"", true);
}

// ================================================================== binary

namespace {

size_t scalarSize(VarType t) {
    switch (t) {
        case vbByte: return 1;
        case vbBoolean:
        case vbInteger: return 2;
        case vbLong:
        case vbSingle: return 4;
        case vbDouble:
        case vbCurrency:
        case vbDate: return 8;
        default: return 0;
    }
}

std::string encodeScalar(const Variant& v) {
    std::string b;
    auto raw = [&](const void* p, size_t size) { b.assign(static_cast<const char*>(p), size); };
    switch (v.vt()) {
        case vbString: return stringToAnsi(v.asString());
        case vbByte: { const uint8_t x = v.asByte(); raw(&x, 1); break; }
        case vbBoolean:
        case vbInteger: { const int16_t x = v.asInteger(); raw(&x, 2); break; }
        case vbLong: { const int32_t x = v.asLong(); raw(&x, 4); break; }
        case vbSingle: { const float x = v.asSingle(); raw(&x, 4); break; }
        case vbDouble:
        case vbDate: { const double x = v.asDouble(); raw(&x, 8); break; }
        case vbCurrency: { const int64_t x = v.asCurrency(); raw(&x, 8); break; }
        default: raiseError(errTypeMismatch);
    }
    return b;
}

Variant decodeScalar(VarType t, const char* p) {
    switch (t) {
        case vbByte: return Variant(static_cast<uint8_t>(*p));
        case vbBoolean: { int16_t x; std::memcpy(&x, p, 2); return Variant(x != 0); }
        case vbInteger: { int16_t x; std::memcpy(&x, p, 2); return Variant(x); }
        case vbLong: { int32_t x; std::memcpy(&x, p, 4); return Variant(x); }
        case vbSingle: { float x; std::memcpy(&x, p, 4); return Variant(x); }
        case vbDouble: { double x; std::memcpy(&x, p, 8); return Variant(x); }
        case vbDate: { double x; std::memcpy(&x, p, 8); return Variant::date(x); }
        case vbCurrency: { int64_t x; std::memcpy(&x, p, 8); return Variant::currency(x); }
        default: raiseError(errTypeMismatch);
    }
}

OpenFile& binaryFile(int32_t n, int64_t position) {
    OpenFile& f = fileFor(n);
    if (f.mode != OpenMode::Binary) raiseError(errBadFileMode);
    if (position < 0) raiseError(errBadRecordNumber);
    if (position > 0) f.pos = position - 1;
    return f;
}

}  // namespace

void Get(int32_t n, int64_t position, Variant& var) {
    OpenFile& f = binaryFile(n, position);
    if (!f.canRead) raiseError(errPathFileAccess);
    if (var.isString()) {
        const size_t len = var.asString().size();
        std::string bytes = readAt(f, f.pos, len);
        bytes.resize(len, '\0');
        var = Variant(ansiToString(bytes));
        f.pos += int64_t(len);
        return;
    }
    if (var.isArray()) {
        SafeArray& a = var.arrayForWrite();
        const size_t size = scalarSize(a.elementType());
        if (size == 0) raiseError(errTypeMismatch);
        std::string bytes = readAt(f, f.pos, size * a.size());
        bytes.resize(size * a.size(), '\0');
        auto elems = a.elements();
        for (size_t i = 0; i < elems.size(); ++i) elems[i] = decodeScalar(a.elementType(), bytes.data() + i * size);
        f.pos += int64_t(bytes.size());
        return;
    }
    const size_t size = scalarSize(var.vt());
    if (size == 0) raiseError(errTypeMismatch);
    std::string bytes = readAt(f, f.pos, size);
    bytes.resize(size, '\0');
    var = decodeScalar(var.vt(), bytes.data());
    f.pos += int64_t(size);
}

void Put(int32_t n, int64_t position, const Variant& value) {
    OpenFile& f = binaryFile(n, position);
    if (!f.canWrite) raiseError(errPathFileAccess);
    std::string bytes;
    if (value.isArray()) {
        for (const Variant& e : value.asArray().elements()) bytes += encodeScalar(e);
    } else {
        bytes = encodeScalar(value);
    }
    writeAt(f, f.pos, bytes);
    f.pos += int64_t(bytes.size());
}

void Seek(int32_t n, int64_t position) {
    OpenFile& f = fileFor(n);
    if (position < 1) raiseError(errBadRecordNumber);
    if (!f.wbuf.empty()) flush(f);
    f.pos = position - 1;
}

int64_t Seek(int32_t n) { return fileFor(n).pos + 1; }

int64_t Loc(int32_t n) {
    OpenFile& f = fileFor(n);
    if (f.mode == OpenMode::Binary) return f.pos;
    return (f.pos + 127) / 128;
}

int64_t LOF(int32_t n) { return fileSize(fileFor(n)); }

bool Eof(int32_t n) {
    OpenFile& f = fileFor(n);
    switch (f.mode) {
        case OpenMode::Input: return peekByte(f) < 0;
        case OpenMode::Binary: return f.pos > fileSize(f);
        default: return true;
    }
}

// ================================================================== paths

int64_t FileLen(StringView path) {
    const std::string native = mapName(path);
    flushAll();
    struct stat st;
    if (::stat(native.c_str(), &st) != 0) raiseFor(errno, native);
    return S_ISDIR(st.st_mode) ? 0 : int64_t(st.st_size);
}

double FileDateTime(StringView path) {
    const std::string native = mapName(path);
    flushAll();
    struct stat st;
    if (::stat(native.c_str(), &st) != 0) raiseFor(errno, native);
    const time_t t = st.st_mtim.tv_sec;
    struct tm tm;
    if (!::localtime_r(&t, &tm)) raiseError(errDeviceIO);
    double day = 0, time = 0;
    check(dateFromParts(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, day));
    check(timeSerial(tm.tm_hour, tm.tm_min, std::min(tm.tm_sec, 59), time));
    return day >= 0 ? day + time : day - time;
}

int32_t GetAttr(StringView path) {
    const std::string native = mapName(path);
    struct stat st;
    if (::stat(native.c_str(), &st) != 0) raiseFor(errno, native);
    const size_t slash = native.find_last_of('/');
    return attributesOf(st, slash == std::string::npos ? native : native.substr(slash + 1));
}

void SetAttr(StringView path, int32_t attributes) {
    const std::string native = mapName(path);
    struct stat st;
    if (::stat(native.c_str(), &st) != 0) raiseFor(errno, native);
    if (isOpen(st)) raiseError(errPathFileAccess);
    mode_t m = st.st_mode & 07777;
    if (attributes & vbReadOnly) m &= ~mode_t(S_IWUSR | S_IWGRP | S_IWOTH);
    else m |= S_IWUSR;
    if (::chmod(native.c_str(), m) != 0) raiseFor(errno, native);
}

String Dir(StringView pattern, int32_t attributes) {
    gDir = DirCursor{};
    if ((startsWithDrive(pattern) || (!pattern.empty() && pattern[0] == u'\\')) && !isDirectory(driveRoot()))
        raiseError(errDiskNotReady);
    String dir, last;
    splitPattern(pattern, dir, last);
    if (last.empty()) last.assign(1, u'*');
    const std::string nativeDir = mapDirectory(dir);
    gDir.active = true;
    if (!hasWildcard(last)) {
        const std::string native = mapPath(dir + last);
        struct stat st;
        if (::stat(native.c_str(), &st) == 0) {
            const String name = lastComponent(native);
            if (admitted(attributesOf(st, toNativeName(name)), attributes)) gDir.names.push_back(name);
        }
    } else {
        for (const Entry& e : matchingEntries(nativeDir, last)) {
            if (admitted(attributesOf(e.st, e.name), attributes)) gDir.names.push_back(fromNativeName(e.name));
        }
    }
    return Dir();
}

String Dir() {
    if (!gDir.active) raiseError(errInvalidCall);
    if (gDir.next >= gDir.names.size()) {
        gDir = DirCursor{};
        return String();
    }
    return gDir.names[gDir.next++];
}

void FileCopy(StringView source, StringView destination) {
    const std::string from = mapName(source);
    const std::string to = mapName(destination);
    flushAll();
    struct stat sst;
    if (::stat(from.c_str(), &sst) != 0) raiseFor(errno, from);
    if (S_ISDIR(sst.st_mode)) raiseError(errPathFileAccess);
    if (isOpenForWriting(sst)) raiseError(errPermissionDenied);
    struct stat dst;
    if (::stat(to.c_str(), &dst) == 0) {
        if (S_ISDIR(dst.st_mode)) raiseError(errPathFileAccess);
        if (dst.st_dev == sst.st_dev && dst.st_ino == sst.st_ino) raiseError(errPermissionDenied);
        if (isOpen(dst)) raiseError(errPermissionDenied);
        if (::access(to.c_str(), W_OK) != 0) raiseError(errPathFileAccess);
    } else if (!isDirectory(parentOf(to))) {
        raiseError(errPathNotFound);
    }

    Fd in;
    in.fd = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (in.fd < 0) raiseFor(errno, from);
    std::string temp = parentOf(to) + "/.qvt-copy-XXXXXX";
    Fd out;
    out.fd = ::mkstemp(temp.data());
    if (out.fd < 0) raiseFor(errno, to);
    try {
        copyFileContents(in.fd, out.fd, from, to);
        ::fchmod(out.fd, sst.st_mode & 07777);
        const struct timespec times[2] = {sst.st_atim, sst.st_mtim};
        ::futimens(out.fd, times);
        if (::close(out.fd) != 0) {
            out.fd = -1;
            raiseFor(errno, to);
        }
        out.fd = -1;
        if (::rename(temp.c_str(), to.c_str()) != 0) raiseFor(errno, to);
    } catch (...) {
        ::unlink(temp.c_str());
        throw;
    }
}

void Kill(StringView pattern) {
    if (pattern.empty()) raiseError(errBadFileNameOrNumber);
    std::vector<std::string> victims;
    if (hasWildcard(pattern)) {
        String dir, last;
        splitPattern(pattern, dir, last);
        if (hasWildcard(dir)) raiseError(errBadFileNameOrNumber);
        const std::string nativeDir = mapDirectory(dir);
        if (!isDirectory(nativeDir)) raiseError(errPathNotFound);
        for (const Entry& e : matchingEntries(nativeDir, last)) {
            if (admitted(attributesOf(e.st, e.name), vbNormal)) victims.push_back(e.native);
        }
        if (victims.empty()) raiseError(errFileNotFound);
    } else {
        const std::string native = mapName(pattern);
        struct stat st;
        if (::stat(native.c_str(), &st) != 0) raiseFor(errno, native);
        if (S_ISDIR(st.st_mode)) raiseError(errFileNotFound);
        victims.push_back(native);
    }
    for (const std::string& v : victims) {
        struct stat st;
        if (::stat(v.c_str(), &st) != 0) raiseFor(errno, v);
        if (isOpen(st) || !(st.st_mode & S_IWUSR)) raiseError(errPathFileAccess);
    }
    for (const std::string& v : victims)
        if (::unlink(v.c_str()) != 0) raiseFor(errno, v);
}

void Name(StringView oldPath, StringView newPath) {
    const std::string from = mapName(oldPath);
    std::string to = mapName(newPath);
    struct stat sst;
    if (::lstat(from.c_str(), &sst) != 0) raiseFor(errno, from);
    if (isOpen(sst)) raiseError(errPathFileAccess);
    struct stat dst;
    if (::lstat(to.c_str(), &dst) == 0) {
        if (dst.st_dev != sst.st_dev || dst.st_ino != sst.st_ino) raiseError(errFileAlreadyExists);
        // The same entry under another case: rename to the spelling given.
        to = parentOf(to) + "/" + toNativeName(lastComponent(mapPathLiteral(newPath)));
        if (to == from) return;
    } else if (!isDirectory(parentOf(to))) {
        raiseError(errPathNotFound);
    }
    // link + unlink never replaces an existing target; directories and file
    // systems without hard links use rename after the check above.
    if (!S_ISDIR(sst.st_mode) && ::link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return;
    }
    if (errno == EEXIST) raiseError(errFileAlreadyExists);
    if (errno == EXDEV) raiseError(errRenameAcrossDisks);
    if (::rename(from.c_str(), to.c_str()) != 0) raiseFor(errno, to);
}

void MkDir(StringView path) {
    const std::string native = mapName(path);
    struct stat st;
    if (::lstat(native.c_str(), &st) == 0) raiseError(errPathFileAccess);
    if (!isDirectory(parentOf(native))) raiseError(errPathNotFound);
    if (::mkdir(native.c_str(), 0777) != 0) raiseFor(errno, native);
}

void RmDir(StringView path) {
    const std::string native = mapName(path);
    if (!isDirectory(native)) raiseError(errPathNotFound);
    if (::rmdir(native.c_str()) != 0) {
        if (errno == ENOTEMPTY || errno == EEXIST) raiseError(errPathFileAccess);
        raiseFor(errno, native);
    }
}

String CurDir(StringView drive) {
    if (!drive.empty() && !((drive[0] >= u'A' && drive[0] <= u'Z') || (drive[0] >= u'a' && drive[0] <= u'z')))
        raiseError(errInvalidCall);
    std::vector<char> buf(4096);
    while (!::getcwd(buf.data(), buf.size())) {
        if (errno != ERANGE) raiseFor(errno, ".");
        buf.resize(buf.size() * 2);
    }
    return toDosPath(buf.data());
}

void ChDir(StringView path) {
    const std::string native = mapName(path);
    if (!isDirectory(native)) raiseError(errPathNotFound);
    if (::chdir(native.c_str()) != 0) raiseFor(errno, native);
}

}  // namespace qvt
