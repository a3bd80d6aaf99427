// The installation's path in the registry of a Windows machine. The key is written to only where it
// does not exist, and removed again.

#include <optional>

#include "platform/windows/registry.h"
#include "platform/windows/win32.h"
#include "registry_query.h"

namespace rivelt {
namespace {

using namespace std::string_literals;

constexpr char Parent_Key[] = "SOFTWARE\\Microsoft\\Microsoft Games\\Train Simulator";
constexpr char Installation_Key[] = "SOFTWARE\\Microsoft\\Microsoft Games\\Train Simulator\\1.0";
constexpr REGSAM Views[] = {KEY_WOW64_64KEY, KEY_WOW64_32KEY};

using Value = std::optional<std::wstring>;

// Makes the key in a view of the registry, with a value of these bytes if there is one.
void Put(REGSAM view, const Value& value, DWORD type) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, Installation_Key, 0, nullptr, 0,
                            KEY_ALL_ACCESS | view, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  if (value) {
    const auto size = static_cast<DWORD>(value->size() * sizeof(wchar_t));
    EXPECT_EQ(RegSetKeyValueW(key, nullptr, L"Path", type, value->data(), size), ERROR_SUCCESS);
  }
  RegCloseKey(key);
}

TEST(Windows_Registry_Test, The_Value_Comes_From_The_32_Bit_View_With_Its_Zero) {
  for (const REGSAM view : Views) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, Installation_Key, 0, KEY_READ | view, &key) == 0)
      GTEST_SKIP() << "this machine has an installation, which the test leaves alone";
  }
  const auto text = [](const wchar_t* path) { return std::wstring(path) + L'\0'; };
  const struct {
    const char* Situation;
    Value Native, Of_32_Bit;
    DWORD Type;
    std::string Answer;
  } cases[] = {
      {"both", text(L"C:\\train"), text(L"C:\\Z\u00fcge"), REG_SZ, "1 C:\\Z\xfcge\0"s},
      {"64-bit view", text(L"C:\\train"), {}, REG_SZ, "no value: 2"},
      {"no zero", {}, L"C:\\train\\", REG_EXPAND_SZ, "2 C:\\train\\\0"s},
      {"no bytes", {}, L"", REG_SZ, "1 "},
      {"no value", {}, {}, REG_SZ, "no value: 2"},
  };
  const auto registry = Windows_Registry();
  EXPECT_EQ(Query(*registry, Installation_Key), "no key: 2");
  for (const auto& item : cases) {
    Put(KEY_WOW64_64KEY, item.Native, item.Type);
    Put(KEY_WOW64_32KEY, item.Of_32_Bit, item.Type);
    EXPECT_EQ(Query(*registry, Installation_Key), item.Answer) << item.Situation;
    for (const REGSAM view : Views) {
      for (const char* key : {Installation_Key, Parent_Key})
        RegDeleteKeyExA(HKEY_LOCAL_MACHINE, key, view, 0);
    }
  }
}

}  // namespace
}  // namespace rivelt
