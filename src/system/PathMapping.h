// The one rule that maps the DOS form of a path name, in which the library's
// logic and its callers write paths ("C:\DATA\A.TXT", "\TEMP", "..\X.BAS"),
// to a path of this platform, and back for CurDir.
//
// The rule, applied in this order:
//   1. "\" and "/" are both separators; every separator becomes "/".
//   2. A drive prefix "X:" (any letter) names the drive root: the directory
//      in the environment variable QVT_DRIVE_ROOT, "/" when it is unset or
//      empty. All letters share that one root. "X:\A" is <root>/A; "X:A"
//      (drive-relative) is A under the current directory.
//   3. A path that begins with one "\" is rooted on the current drive, that
//      is, at the drive root as well. "\\server\share\A" (UNC) becomes
//      <root>/server/share/A.
//   4. A path that begins with "/" is already this platform's absolute form
//      and is taken as it is, so native paths pass through unchanged.
//   5. Anything else is relative to the process's current directory.
//   6. Each existing component is looked up without regard to case (as the
//      DOS file system does) when no entry of exactly that name exists; a
//      component that does not exist keeps the spelling given. "." and ".."
//      keep their usual meaning.
// Text is UTF-16 inside the library and UTF-8 in the file system.
//
// CurDir reverses rule 2: a current directory under the drive root is
// reported as "C:\..." with "\" separators; outside the root the native
// path is reported, which rule 4 maps back to itself.
#pragma once
#include <string>

#include "frame/Variant.h"

namespace qvt {

// The drive root directory of rule 2, without a trailing "/" (except "/").
std::string driveRoot();

// The platform path of a DOS-form path name (rules 1 to 6).
std::string mapPath(StringView dosPath);
// As mapPath, without the case-insensitive lookup of rule 6.
std::string mapPathLiteral(StringView dosPath);

// The DOS form of a platform path (the reverse of rule 2).
String toDosPath(const std::string& nativePath);

// UTF-16 <-> UTF-8 for names, so that every name round-trips (Utf8Mode::NativeName).
std::string toNativeName(StringView s);
String fromNativeName(std::string_view s);

}  // namespace qvt
