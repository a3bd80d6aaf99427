// The text file in which Wine keeps a registry: keys in brackets, and below each its values. A
// backslash in a name or a text is doubled. A value that is no string is found and has no data.
//
//   [Software\\Example\\1.0] 1017000000
//   "Path"="C:\\Trains"
//   "Cache"=str(2):"%TEMP%\\Trains"
//   "Picture"=hex:42,4d,36

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "system/registry_service.h"

namespace rivelt {

struct Registry_Value {
  Long Type = 0;
  std::string Data;  // in UTF-8, with its terminating zero; or empty
};

// By the folded form of their names; the default value has the empty name.
using Registry_Values = std::map<Text, Registry_Value>;

// The values of one key, named in UTF-8 with single backslashes; letter case does not count. None
// if the file has no such key. A line without a name is passed over, of two values of one name the
// later counts. Takes any bytes as a file, in time that grows with their number.
std::optional<Registry_Values> Read_Registry_Key(std::string_view file, std::string_view key);

// Null if there is none of that name.
const Registry_Value* Find_Value(const Registry_Values& values, std::string_view name);

}  // namespace rivelt
