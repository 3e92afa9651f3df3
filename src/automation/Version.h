// The library's version: the type library QuorvaneTools2_0.
#pragma once

namespace qvt {

inline constexpr const char* kLibraryVersion = "2.0";
inline constexpr const char* kTypeLibraryName = "QuorvaneTools2_0";

}  // namespace qvt
