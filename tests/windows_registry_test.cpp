// The installation's path in the registry of a Windows machine. The key is written to only where it
// does not exist, and removed again.

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "app/main.h"
#include "platform/memory/memory_window.h"
#include "platform/windows/files.h"
#include "platform/windows/registry.h"
#include "platform/windows/win32.h"

namespace rivelt {
namespace {

using namespace std::string_literals;

constexpr wchar_t Installation_Key[] =
    L"SOFTWARE\\Microsoft\\Microsoft Games\\Train Simulator\\1.0";
constexpr wchar_t Parent_Key[] = L"SOFTWARE\\Microsoft\\Microsoft Games\\Train Simulator";
constexpr char Asked_Key[] = "SOFTWARE\\Microsoft\\Microsoft Games\\Train Simulator\\1.0";

using Value = std::optional<std::wstring>;

// Makes the key in a view of the registry, with a value of these bytes if there is one.
void Put(REGSAM view, const Value& value, DWORD type = REG_SZ) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, Installation_Key, 0, nullptr, 0,
                            KEY_ALL_ACCESS | view, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  if (value) {
    EXPECT_EQ(RegSetValueExW(key, L"Path", 0, type, reinterpret_cast<const BYTE*>(value->data()),
                             static_cast<DWORD>(value->size() * sizeof(wchar_t))),
              ERROR_SUCCESS);
  }
  RegCloseKey(key);
}

class Windows_Registry_Test : public testing::Test {
 protected:
  void SetUp() override {
    for (const REGSAM view : Views) {
      HKEY key = nullptr;
      if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, Installation_Key, 0, KEY_READ | view, &key) ==
          ERROR_SUCCESS) {
        RegCloseKey(key);
        GTEST_SKIP() << "this machine has an installation, which the test leaves alone";
      }
    }
    Is_Fresh = true;
  }
  void TearDown() override {
    if (Is_Fresh) Remove_Keys();
  }

  static void Remove_Keys() {
    for (const REGSAM view : Views) {
      for (const wchar_t* key : {Installation_Key, Parent_Key}) {
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, key, view, 0);
      }
    }
  }

  static constexpr REGSAM Views[] = {KEY_WOW64_64KEY, KEY_WOW64_32KEY};
  bool Is_Fresh = false;
};

TEST_F(Windows_Registry_Test, The_Value_Comes_From_The_View_That_Has_It_With_Its_Zero) {
  const auto text = [](const wchar_t* path) { return std::wstring(path) + L'\0'; };
  const struct {
    const char* Situation;
    Value Native, Of_32_Bit;
    DWORD Type;
    Long Status;
    std::string Bytes;
  } cases[] = {
      {"own view", text(L"C:\\train"), {}, REG_SZ, 0, "C:\\train\0"s},
      {"32-bit view", {}, text(L"C:\\old"), REG_SZ, 0, "C:\\old\0"s},
      {"both", text(L"C:\\train"), text(L"C:\\old"), REG_SZ, 0, "C:\\train\0"s},
      {"no zero", L"C:\\train", {}, REG_SZ, 0, "C:\\train\0"s},
      {"no zero, 32-bit view", {}, L"C:\\train\\", REG_EXPAND_SZ, 0, "C:\\train\\\0"s},
      {"only a zero", text(L""), {}, REG_SZ, 0, "\0"s},
      {"accent", text(L"C:\\Z\u00fcge"), {}, REG_SZ, 0, "C:\\Z\xfcge\0"s},
      {"no bytes", {}, L"", REG_SZ, 0, ""},
      {"no bytes, binary", {}, L"", REG_BINARY, 0, ""},
      {"no value", {}, {}, REG_SZ, ERROR_FILE_NOT_FOUND, ""},
  };
  const auto registry = Windows_Registry();
  Registry_Key key = 0;
  EXPECT_EQ(registry->RegOpenKeyExA(Local_Machine, Asked_Key, 0, 1, key), ERROR_FILE_NOT_FOUND);
  for (const auto& item : cases) {
    SCOPED_TRACE(item.Situation);
    Put(KEY_WOW64_64KEY, item.Native, item.Type);
    Put(KEY_WOW64_32KEY, item.Of_32_Bit, item.Type);
    EXPECT_EQ(registry->RegOpenKeyExA(Local_Machine, Asked_Key, 0, 1, key), Registry_Success);
    Long size = 0;
    Long type = 0;
    EXPECT_EQ(registry->RegQueryValueExA(key, "Path", 0, type, nullptr, size), item.Status);
    ASSERT_EQ(static_cast<std::size_t>(size), item.Bytes.size());
    std::string bytes(item.Bytes.size(), 'x');
    EXPECT_EQ(registry->RegQueryValueExA(key, "Path", 0, type, bytes.data(), size), item.Status);
    EXPECT_EQ(bytes, item.Bytes);
    EXPECT_EQ(static_cast<std::size_t>(size), bytes.size());
    registry->RegCloseKey(key);
    Remove_Keys();
  }
}

TEST_F(Windows_Registry_Test, The_Form_Reports_A_Value_Without_Bytes_And_Goes_On_Without_A_Key) {
  const auto log_of_start = [] {
    Memory_Window window;
    const auto registry = Windows_Registry();
    window.Start(*registry, Windows_Files);
    return window.Log();
  };
  EXPECT_TRUE(log_of_start().starts_with(u"Could not read installed routes!"));
  Put(0, L"");
  EXPECT_TRUE(log_of_start().starts_with(u"Could not locate your MSTS installation!"));
}

}  // namespace
}  // namespace rivelt
