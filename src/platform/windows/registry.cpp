#include "platform/windows/registry.h"

#include <algorithm>
#include <string>

#include "platform/windows/ansi.h"
#include "platform/windows/win32.h"

namespace rivelt {
namespace {

// The handles of keys have 32 bits; their sign is spread over the pointer.
HKEY Handle_Of(Registry_Key key) {
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
  Long RegOpenKeyExA(Registry_Key root, std::string_view subkey, Long options, Long access,
                     Registry_Key& key) override {
    HKEY opened = nullptr;
    const LSTATUS status =
        ::RegOpenKeyExA(Handle_Of(root), std::string(subkey).c_str(), static_cast<DWORD>(options),
                        static_cast<REGSAM>(access) | KEY_WOW64_32KEY, &opened);
    if (status == ERROR_SUCCESS)
      key = static_cast<Registry_Key>(reinterpret_cast<ULONG_PTR>(opened));
    return status;
  }

  Long RegQueryValueExA(Registry_Key key, std::string_view value_name, Long /*reserved*/,
                        Long& type, char* data, Long& size) override {
    Stored_Value value;
    const LSTATUS status = Query(Handle_Of(key), std::string(value_name), value);
    if (status != ERROR_SUCCESS) return status;
    if (Is_String(value.Type) && !value.Bytes.empty() && value.Bytes.back() != '\0') {
      value.Bytes.push_back('\0');
    }
    const Long answer = Hand_Over(value.Bytes, data, size);
    if (answer == Registry_Success) type = static_cast<Long>(value.Type);
    return answer;
  }

  Long RegCloseKey(Registry_Key key) override { return ::RegCloseKey(Handle_Of(key)); }

  Text Wide(std::string_view narrow) const override { return From_Ansi(narrow); }
};

}  // namespace

std::unique_ptr<Registry> Windows_Registry() {
  return std::make_unique<Registry_Of_Windows>();
}

}  // namespace rivelt
