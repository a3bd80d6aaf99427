#include "platform/windows/registry.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

#include "platform/windows/ansi.h"
#include "platform/windows/win32.h"

namespace rivelt {
namespace {

// A handle of a predefined key is its number with the sign spread over the pointer.
HKEY Predefined_Key(Registry_Key key) {
  return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(key)));
}

struct Stored_Value {
  DWORD Type = REG_NONE;
  std::string Bytes;
};

bool Is_String(DWORD type) {
  return type == REG_SZ || type == REG_EXPAND_SZ;
}

// The status of the query; value is filled if it is 0.
LSTATUS Query(HKEY key, const std::string& name, Stored_Value& value) {
  DWORD size = 0;
  LSTATUS status = ::RegQueryValueExA(key, name.c_str(), nullptr, &value.Type, nullptr, &size);
  // Between two queries another program may make the value longer.
  while (status == ERROR_SUCCESS) {
    value.Bytes.resize(size);
    // Without a buffer the operation would answer with the size alone, and an empty string may lend
    // none.
    value.Bytes.reserve(1);
    status = ::RegQueryValueExA(key, name.c_str(), nullptr, &value.Type,
                                reinterpret_cast<BYTE*>(value.Bytes.data()), &size);
    if (status == ERROR_SUCCESS) {
      value.Bytes.resize(std::min<std::size_t>(size, value.Bytes.size()));
      break;
    }
    if (status == ERROR_MORE_DATA) status = ERROR_SUCCESS;
  }
  return status;
}

class Registry_Of_Windows : public Registry {
 public:
  ~Registry_Of_Windows() override {
    for (const auto& [number, views] : Open_Keys) Close(views);
  }

  Long RegOpenKeyExA(Registry_Key root, std::string_view subkey, Long options, Long access,
                     Registry_Key& key) override {
    const std::string name(subkey);
    Views views{};
    LSTATUS status = ERROR_SUCCESS;
    for (std::size_t i = 0; i < views.size(); ++i) {
      const REGSAM wanted = static_cast<REGSAM>(access) | Flags_Of_Views[i];
      const LSTATUS opened = ::RegOpenKeyExA(Predefined_Key(root), name.c_str(),
                                             static_cast<DWORD>(options), wanted, &views[i]);
      if (opened != ERROR_SUCCESS) {
        views[i] = nullptr;
        if (i == 0) status = opened;
      }
    }
    if (views == Views{}) return status;
    key = ++Last_Key;
    Open_Keys.emplace(key, views);
    return Registry_Success;
  }

  Long RegQueryValueExA(Registry_Key key, std::string_view value_name, Long /*reserved*/,
                        Long& type, char* data, Long& size) override {
    Stored_Value value;
    const LSTATUS status = Find_Value(key, std::string(value_name), value);
    if (status != ERROR_SUCCESS) return status;
    if (Is_String(value.Type) && !value.Bytes.empty() && value.Bytes.back() != '\0') {
      value.Bytes.push_back('\0');
    }
    const Long answer = Hand_Over(value.Bytes, data, size);
    if (answer == Registry_Success) type = static_cast<Long>(value.Type);
    return answer;
  }

  Long RegCloseKey(Registry_Key key) override {
    const auto found = Open_Keys.find(key);
    if (found == Open_Keys.end()) return ERROR_INVALID_HANDLE;
    Close(found->second);
    Open_Keys.erase(found);
    return Registry_Success;
  }

  Text Wide(std::string_view narrow) const override { return From_Ansi(narrow); }

 private:
  // The key in the program's own view and in the 32-bit view; null where there is none.
  static constexpr std::array<REGSAM, 2> Flags_Of_Views = {0, KEY_WOW64_32KEY};
  using Views = std::array<HKEY, Flags_Of_Views.size()>;

  static void Close(const Views& views) {
    for (const HKEY view : views) {
      if (view != nullptr) ::RegCloseKey(view);
    }
  }

  LSTATUS Find_Value(Registry_Key key, const std::string& name, Stored_Value& value) const {
    LSTATUS status = ERROR_INVALID_HANDLE;
    const auto found = Open_Keys.find(key);
    if (found == Open_Keys.end()) return status;
    for (const HKEY view : found->second) {
      if (view == nullptr) continue;
      status = Query(view, name, value);
      if (status == ERROR_SUCCESS) break;
    }
    return status;
  }

  std::map<Registry_Key, Views> Open_Keys;
  Registry_Key Last_Key = 0;
};

}  // namespace

std::unique_ptr<Registry> Windows_Registry() {
  return std::make_unique<Registry_Of_Windows>();
}

}  // namespace rivelt
