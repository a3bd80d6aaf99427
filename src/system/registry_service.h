// What the program asks of the registry: one narrow value, through three operations that report by
// status and never raise Failure.

#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "text/text.h"

namespace rivelt {

// A key that is open; 0 is none.
using Registry_Key = std::uint32_t;

inline constexpr Registry_Key Local_Machine = 0x80000002;

// The statuses and the type that the system has for them, on every machine.
inline constexpr Long Registry_Success = 0;
inline constexpr Long Status_File_Not_Found = 2;
inline constexpr Long Status_Invalid_Handle = 6;
inline constexpr Long Status_More_Data = 234;
inline constexpr Long Registry_String = 1;

class Registry {
 public:
  virtual ~Registry() = default;

  // Writes the open key to key. A status other than 0 leaves key as it was.
  virtual Long RegOpenKeyExA(Registry_Key root, std::string_view subkey, Long options, Long access,
                             Registry_Key& key) = 0;

  // Without data (a null pointer) writes the number of bytes that the value needs to size, its
  // terminating zero included. With data, size says how many bytes fit, and gets the number
  // written. A status other than 0 leaves data as it was; size then says how many bytes the value
  // needs, or is as it was if there is no value.
  virtual Long RegQueryValueExA(Registry_Key key, std::string_view value_name, Long reserved,
                                Long& type, char* data, Long& size) = 0;

  virtual Long RegCloseKey(Registry_Key key) = 0;

  // The wide form of narrow text in the encoding of the values: the system's code page.
  virtual Text Wide(std::string_view narrow) const = 0;
};

// What RegQueryValueExA answers where the value is these bytes.
inline Long Hand_Over(std::string_view value, char* data, Long& size) {
  const Long room = std::exchange(size, static_cast<Long>(value.size()));
  if (data == nullptr) return Registry_Success;
  if (room < size) return Status_More_Data;
  value.copy(data, value.size());
  return Registry_Success;
}

}  // namespace rivelt
