#include "system/PathMapping.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

#include "frame/Locale.h"
#include "frame/Utf8.h"

namespace qvt {

std::string toNativeName(StringView s) { return toUtf8(s, Utf8Mode::NativeName); }
String fromNativeName(std::string_view s) { return fromUtf8(s, Utf8Mode::NativeName); }



std::string driveRoot() {
    const char* env = std::getenv("QVT_DRIVE_ROOT");
    std::string root = (env && *env) ? env : "/";
    while (root.size() > 1 && root.back() == '/') root.pop_back();
    return root;
}

namespace {

bool isSeparator(char16_t c) { return c == u'\\' || c == u'/'; }

std::string currentDirectory() {
    std::vector<char> buf(4096);
    while (!::getcwd(buf.data(), buf.size())) {
        if (errno != ERANGE) return ".";
        buf.resize(buf.size() * 2);
    }
    return buf.data();
}

std::string join(const std::string& base, const std::string& rest) {
    if (rest.empty()) return base;
    if (base.empty()) return rest;
    if (base.back() == '/') return base + rest;
    return base + "/" + rest;
}

bool sameFolded(const String& a, const String& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (textCompareKey(a[i]) != textCompareKey(b[i])) return false;
    return true;
}

// Rule 6: resolve each component of an absolute or relative native path.
std::string resolveCase(const std::string& path) {
    std::string done;
    size_t i = 0;
    if (!path.empty() && path[0] == '/') {
        done.assign(1, '/');
        i = 1;
    }
    bool missing = false;
    while (i <= path.size()) {
        size_t j = path.find('/', i);
        if (j == std::string::npos) j = path.size();
        std::string part = path.substr(i, j - i);
        i = j + 1;
        if (part.empty()) {
            if (j == path.size() && !done.empty() && done.back() != '/') done += '/';
            if (j == path.size()) break;
            continue;
        }
        std::string candidate = done.empty() ? part : join(done, part);
        if (!missing && part != "." && part != "..") {
            struct stat st;
            if (::lstat(candidate.c_str(), &st) != 0) {
                const String wanted = fromNativeName(part);
                DIR* d = ::opendir(done.empty() ? "." : done.c_str());
                bool found = false;
                if (d) {
                    while (dirent* e = ::readdir(d)) {
                        if (sameFolded(fromNativeName(e->d_name), wanted)) {
                            candidate = done.empty() ? std::string(e->d_name) : join(done, e->d_name);
                            found = true;
                            break;
                        }
                    }
                    ::closedir(d);
                }
                if (!found) missing = true;
            }
        }
        done = candidate;
        if (j == path.size()) break;
    }
    return done;
}

}  // namespace

std::string mapPathLiteral(StringView dos) {
    std::string prefix;  // where the rest hangs
    size_t i = 0;
    if (dos.size() >= 2 && dos[1] == u':' &&
        ((dos[0] >= u'A' && dos[0] <= u'Z') || (dos[0] >= u'a' && dos[0] <= u'z'))) {
        i = 2;
        if (i < dos.size() && isSeparator(dos[i])) {
            prefix = driveRoot();
            while (i < dos.size() && isSeparator(dos[i])) ++i;
        } else {
            prefix = currentDirectory();
        }
    } else if (!dos.empty() && dos[0] == u'/') {
        prefix = "/";
        while (i < dos.size() && isSeparator(dos[i])) ++i;
    } else if (!dos.empty() && dos[0] == u'\\') {
        prefix = driveRoot();
        while (i < dos.size() && isSeparator(dos[i])) ++i;
    }
    String rest(dos.substr(i));
    for (char16_t& c : rest)
        if (c == u'\\') c = u'/';
    return join(prefix, toNativeName(rest));
}

std::string mapPath(StringView dosPath) { return resolveCase(mapPathLiteral(dosPath)); }

String toDosPath(const std::string& native) {
    const std::string root = driveRoot();
    std::string rel;
    if (root == "/") {
        if (native.empty() || native[0] != '/') return fromNativeName(native);
        rel = native.substr(1);
    } else if (native == root) {
        rel.clear();
    } else if (native.compare(0, root.size() + 1, root + "/") == 0) {
        rel = native.substr(root.size() + 1);
    } else {
        return fromNativeName(native);
    }
    String out = u"C:\\" + fromNativeName(rel);
    for (char16_t& c : out)
        if (c == u'/') c = u'\\';
    return out;
}

}  // namespace qvt
