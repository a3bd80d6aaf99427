// The installation's path in the registry of a Windows machine. The key is written to only where it
// does not exist, and removed again.

#include <optional>

#include "form/main.h"
#include "platform/memory/memory_window.h"
#include "platform/windows/files.h"
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

class Windows_Registry_Test : public testing::Test {
 protected:
  void SetUp() override {
    HKEY key = nullptr;
    for (const REGSAM view : Views) {
      Is_Fresh = RegOpenKeyExA(HKEY_LOCAL_MACHINE, Installation_Key, 0, KEY_READ | view, &key) != 0;
      if (!Is_Fresh)
        GTEST_SKIP() << "this machine has an installation, which the test leaves alone";
    }
  }
  void TearDown() override {
    if (Is_Fresh) Remove_Keys();
  }

  // Makes the key in a view of the registry, with a value of these bytes if there is one.
  static void Put(REGSAM view, const Value& value, DWORD type = REG_SZ) {
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
  static void Remove_Keys() {
    for (const REGSAM view : Views) {
      for (const char* key : {Installation_Key, Parent_Key})
        RegDeleteKeyExA(HKEY_LOCAL_MACHINE, key, view, 0);
    }
  }

  bool Is_Fresh = false;
  const std::unique_ptr<Registry> Asked = Windows_Registry();
};

TEST_F(Windows_Registry_Test, The_Value_Comes_From_The_32_Bit_View_With_Its_Zero) {
  const auto text = [](const wchar_t* path) { return std::wstring(path) + L'\0'; };
  const struct {
    const char* Situation;
    Value Native, Of_32_Bit;
    DWORD Type;
    std::string Answer;
  } cases[] = {
      {"32-bit view", {}, text(L"C:\\old"), REG_SZ, "1 C:\\old\0"s},
      {"both", text(L"C:\\train"), text(L"C:\\old"), REG_SZ, "1 C:\\old\0"s},
      {"64-bit view", text(L"C:\\train"), {}, REG_SZ, "no value: 2"},
      {"no zero", {}, L"C:\\train\\", REG_EXPAND_SZ, "2 C:\\train\\\0"s},
      {"only a zero", {}, text(L""), REG_SZ, "1 \0"s},
      {"accent", {}, text(L"C:\\Z\u00fcge"), REG_SZ, "1 C:\\Z\xfcge\0"s},
      {"no bytes", {}, L"", REG_SZ, "1 "},
      {"no bytes, binary", {}, L"", REG_BINARY, "3 "},
      {"no value", {}, {}, REG_SZ, "no value: 2"},
  };
  EXPECT_EQ(Query(*Asked, Installation_Key), "no key: 2");
  for (const auto& item : cases) {
    Put(KEY_WOW64_64KEY, item.Native, item.Type);
    Put(KEY_WOW64_32KEY, item.Of_32_Bit, item.Type);
    EXPECT_EQ(Query(*Asked, Installation_Key), item.Answer) << item.Situation;
    Remove_Keys();
  }
}

TEST_F(Windows_Registry_Test, The_Form_Reports_A_Value_Without_Bytes) {
  Put(KEY_WOW64_32KEY, L"");
  Memory_Window window;
  window.Start(*Asked, Windows_Files);
  EXPECT_TRUE(window.Log().starts_with(u"Could not locate your MSTS installation!"));
}

}  // namespace
}  // namespace rivelt
