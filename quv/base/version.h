// Version of the library; CMakeLists.txt reads the version string from here.
#pragma once

namespace quv {

inline constexpr int kVersionMajor = 0;
inline constexpr int kVersionMinor = 1;
inline constexpr int kVersionPatch = 0;
inline constexpr const char* kVersionString = "0.1.0";

}  // namespace quv
