#include "platform/linux/registry.h"

#include <pwd.h>
#include <unistd.h>

#include <vector>

#include "platform/linux/files.h"
#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

// Empty if it cannot be read.
std::string Read_Bytes(const std::string& path) try {
  std::string bytes;
  const auto file = Files_Of_Linux({})->GetFile(From_Utf8(path));
  file->Read_Bytes([&](std::string_view piece) { bytes += piece; });
  return bytes;
} catch (const Failure&) {
  return {};
}

// A key that 32-bit programs share with all others stays as it is.
std::string Key_Of_32_Bit_Programs(std::string_view key) {
  constexpr std::string_view separate = "software\\";
  const std::string_view start = key.substr(0, separate.size());
  std::string moved(key);
  if (Fold_Case(From_Utf8(start)) == From_Utf8(separate))
    moved.insert(separate.size(), "Wow6432Node\\");
  return moved;
}

}  // namespace

Long Wine_Registry::RegOpenKeyExA(Registry_Key root, std::string_view subkey, Long, Long,
                                  Registry_Key& key) {
  if (root != Local_Machine) return Status_Invalid_Handle;
  const std::string file = Read_Bytes(File);
  auto values = Read_Registry_Key(file, subkey);
  auto others = Read_Registry_Key(file, Key_Of_32_Bit_Programs(subkey));
  if (!values && !others) return Status_File_Not_Found;
  key = ++Last_Key;
  Registry_Values& both = Open_Keys[key];
  if (values) both = std::move(*values);
  if (others) both.merge(*others);
  return Registry_Success;
}

Long Wine_Registry::RegQueryValueExA(Registry_Key key, std::string_view value_name, Long,
                                     Long& type, char* data, Long& size) {
  const auto open_key = Open_Keys.find(key);
  if (open_key == Open_Keys.end()) return Status_Invalid_Handle;
  const Registry_Value* value = Find_Value(open_key->second, value_name);
  if (value == nullptr) return Status_File_Not_Found;
  type = value->Type;
  return Hand_Over(value->Data, data, size);
}

Long Wine_Registry::RegCloseKey(Registry_Key key) {
  return Open_Keys.erase(key) == 1 ? Registry_Success : Status_Invalid_Handle;
}

Text Wine_Registry::Wide(std::string_view narrow) const {
  return From_Utf8(narrow);
}

std::string Wine_Prefix_Of_Account() {
  passwd entry{};
  passwd* found = nullptr;
  std::vector<char> buffer(std::size_t{1} << 16);
  const int error = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
  return std::string(error == 0 && found != nullptr ? found->pw_dir : "") + "/.wine";
}

}  // namespace rivelt
