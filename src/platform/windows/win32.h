// The Win32 API and the ways between its texts and ours, which hold the same UTF-16 code units.

#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

// Macros that would rename members of ours.
#undef DeleteFile
#undef Yield

#include <memory>
#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

inline std::wstring To_Wide(Text_View text) {
  return {text.begin(), text.end()};
}
inline Text From_Wide(std::wstring_view wide) {
  return {wide.begin(), wide.end()};
}

// Raises Failure where the system refuses.
inline void Require(BOOL succeeded) {
  if (!succeeded) throw Failure();
}

// Closes the handle that it owns.
struct Close_Handle {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Owned_Handle = std::unique_ptr<HANDLE, Close_Handle>;

}  // namespace rivelt
