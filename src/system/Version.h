// The build's version, as the exception caption and the plug-in host report it.
#pragma once

namespace System {

inline constexpr const char* kVersion = SORVEL_VERSION_STRING;
inline constexpr const char* kProductName = "Sorvel Vantor2";

}  // namespace System
