#include "system/fixed_registry.h"

#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr Registry_Key The_Key = 1;

}  // namespace

Long Fixed_Registry::RegOpenKeyExA(Registry_Key, std::string_view, Long, Long, Registry_Key& key) {
  key = The_Key;
  return Registry_Success;
}

Long Fixed_Registry::RegQueryValueExA(Registry_Key key, std::string_view, Long, Long& type,
                                      char* data, Long& size) {
  if (key != The_Key) return Status_Invalid_Handle;
  type = Registry_String;
  return Hand_Over(Value, data, size);
}

Long Fixed_Registry::RegCloseKey(Registry_Key key) {
  return key == The_Key ? Registry_Success : Status_Invalid_Handle;
}

Text Fixed_Registry::Wide(std::string_view narrow) const {
  return From_Utf8(narrow);
}

}  // namespace rivelt
