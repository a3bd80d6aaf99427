// The registry of a Windows machine.

#pragma once

#include <memory>

#include "system/registry_service.h"

namespace rivelt {

// Keys are those of 32-bit programs, into which the simulator's installer writes.
//
// A string that is stored without its terminating zero gets one, so that the last character which
// the caller cuts off is never a letter of the path. A value with no bytes at all stays as it is.
std::unique_ptr<Registry> Windows_Registry();

}  // namespace rivelt
