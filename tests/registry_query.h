// The two queries of the program for the one value of a key, for the tests of every registry.

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "system/registry_service.h"

namespace rivelt {

// "type data" of the value, or the status that says why there is none. With room for fewer bytes
// than the value has, the status and what the value needs.
inline std::string Query(Registry& registry, std::string_view subkey, Long room = -1) {
  Registry_Key key = 77;
  Long status = registry.RegOpenKeyExA(Local_Machine, subkey, 0, 1, key);
  EXPECT_EQ(key == 77, status != Registry_Success);
  if (status != Registry_Success) return "no key: " + std::to_string(status);
  Long type = 0;
  Long size = -1;
  status = registry.RegQueryValueExA(key, "Path", 0, type, nullptr, size);
  if (status != Registry_Success) return "no value: " + std::to_string(status);
  std::string data(static_cast<std::size_t>(size), '.');
  Long needed = room < 0 ? size : room;
  status = registry.RegQueryValueExA(key, "Path", 0, type, data.data(), needed);
  EXPECT_EQ(needed, size);
  EXPECT_EQ(registry.RegCloseKey(key), Registry_Success);
  EXPECT_EQ(registry.RegCloseKey(key), Status_Invalid_Handle);
  return std::to_string(status == Registry_Success ? type : status) + " " + data;
}

}  // namespace rivelt
