// The registry of a Windows machine.

#pragma once

#include <memory>

#include "system/registry_service.h"

namespace rivelt {

// A key is looked for in the program's own view of the registry and in the 32-bit view, into which
// 32-bit installers write on 64-bit Windows. A value is taken from the first of the two that has
// it.
//
// A string that is stored without its terminating zero gets one, so that the last character which
// the caller cuts off is never a letter of the path. A value with no bytes at all stays as it is.
std::unique_ptr<Registry> Windows_Registry();

}  // namespace rivelt
