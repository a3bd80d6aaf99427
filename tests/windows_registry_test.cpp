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

// The bytes that each view of the registry holds; none: no value. The key exists in both.
struct Situation {
  const char* Name;
  std::optional<std::wstring> Native, Of_32_Bit;
  DWORD Type;
  const char* Path;  // null: no installation is found
};

void Put(REGSAM view, const Situation& situation, const std::optional<std::wstring>& value) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, Installation_Key, 0, nullptr, 0,
                            KEY_ALL_ACCESS | view, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  if (value) {
    EXPECT_EQ(RegSetValueExW(key, L"Path", 0, situation.Type,
                             reinterpret_cast<const BYTE*>(value->data()),
                             static_cast<DWORD>(value->size() * sizeof(wchar_t))),
              ERROR_SUCCESS);
  }
  RegCloseKey(key);
}

void Remove_Keys() {
  for (const REGSAM view : {REGSAM{KEY_WOW64_64KEY}, REGSAM{KEY_WOW64_32KEY}}) {
    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, Installation_Key, view, 0);
    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, Parent_Key, view, 0);
  }
}

struct Answer {
  Long Open_Status, Size_Status, Status;
  std::string Bytes;
};

Answer Ask(Registry& registry) {
  Registry_Key key = 0;
  Answer answer{};
  answer.Open_Status = registry.RegOpenKeyExA(Local_Machine,
                                              "SOFTWARE\\Microsoft\\Microsoft Games\\Train "
                                              "Simulator\\1.0",
                                              0, 1, key);
  Long size = 0;
  Long type = 0;
  answer.Size_Status = registry.RegQueryValueExA(key, "Path", 0, type, nullptr, size);
  answer.Bytes.resize(static_cast<std::size_t>(size));
  answer.Status = registry.RegQueryValueExA(key, "Path", 0, type, answer.Bytes.data(), size);
  EXPECT_EQ(static_cast<std::size_t>(size), answer.Bytes.size());
  registry.RegCloseKey(key);
  return answer;
}

class Windows_Registry_Test : public testing::Test {
 protected:
  void SetUp() override {
    HKEY key = nullptr;
    for (const REGSAM view : {REGSAM{KEY_WOW64_64KEY}, REGSAM{KEY_WOW64_32KEY}}) {
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

  bool Is_Fresh = false;
};

TEST_F(Windows_Registry_Test, The_Value_Comes_From_The_View_That_Has_It_With_Its_Zero) {
  const auto text = [](const wchar_t* path) { return std::wstring(path) + L'\0'; };
  const Situation situations[] = {
      {"own view", text(L"C:\\train"), std::nullopt, REG_SZ, "C:\\train"},
      {"32-bit view", std::nullopt, text(L"C:\\old"), REG_SZ, "C:\\old"},
      {"both", text(L"C:\\train"), text(L"C:\\old"), REG_SZ, "C:\\train"},
      {"no zero", L"C:\\train", std::nullopt, REG_SZ, "C:\\train"},
      {"no zero, 32-bit view", std::nullopt, L"C:\\train\\", REG_EXPAND_SZ, "C:\\train\\"},
      {"only a zero", text(L""), std::nullopt, REG_SZ, ""},
      {"accent", text(L"C:\\Z\u00fcge"), std::nullopt, REG_SZ, "C:\\Z\xfcge"},
      {"no value", std::nullopt, std::nullopt, REG_SZ, nullptr},
  };
  for (const Situation& situation : situations) {
    SCOPED_TRACE(situation.Name);
    Put(KEY_WOW64_64KEY, situation, situation.Native);
    Put(KEY_WOW64_32KEY, situation, situation.Of_32_Bit);
    const Answer answer = Ask(*Windows_Registry());
    EXPECT_EQ(answer.Open_Status, Registry_Success);
    if (situation.Path == nullptr) {
      EXPECT_EQ(answer.Status, ERROR_FILE_NOT_FOUND);
      EXPECT_EQ(answer.Bytes, "");
    } else {
      EXPECT_EQ(answer.Size_Status, Registry_Success);
      EXPECT_EQ(answer.Status, Registry_Success);
      EXPECT_EQ(answer.Bytes, situation.Path + "\0"s);
    }
    Remove_Keys();
  }
}

TEST_F(Windows_Registry_Test, Without_A_Key_Nothing_Is_Found_And_A_Value_Without_Bytes_Is_Empty) {
  const Answer no_key = Ask(*Windows_Registry());
  EXPECT_EQ(no_key.Open_Status, ERROR_FILE_NOT_FOUND);
  EXPECT_NE(no_key.Status, Registry_Success);
  EXPECT_EQ(no_key.Bytes, "");
  for (const DWORD type : {DWORD{REG_SZ}, DWORD{REG_BINARY}}) {
    const Situation empty{"empty", std::nullopt, L"", type, ""};
    Put(KEY_WOW64_32KEY, empty, empty.Of_32_Bit);
    const Answer answer = Ask(*Windows_Registry());
    EXPECT_EQ(answer.Status, Registry_Success);
    EXPECT_EQ(answer.Bytes, "") << "type " << type;
    Remove_Keys();
  }
}

TEST_F(Windows_Registry_Test, Too_Little_Room_Is_A_Status_And_Leaves_The_Buffer) {
  const Situation situation{"", L"C:\\train", std::nullopt, REG_SZ, nullptr};
  Put(0, situation, situation.Native);
  const auto registry = Windows_Registry();
  Registry_Key key = 0;
  Long type = 0;
  Long size = 8;
  char buffer[] = "unchanged";
  registry->RegOpenKeyExA(Local_Machine,
                          "SOFTWARE\\Microsoft\\Microsoft Games\\Train "
                          "Simulator\\1.0",
                          0, 1, key);
  EXPECT_EQ(registry->RegQueryValueExA(key, "Path", 0, type, buffer, size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 9);
  EXPECT_STREQ(buffer, "unchanged");
  EXPECT_EQ(registry->RegCloseKey(key), Registry_Success);
  EXPECT_EQ(registry->RegCloseKey(key), ERROR_INVALID_HANDLE);
}

TEST_F(Windows_Registry_Test, The_Form_Reports_A_Value_Without_Bytes_And_Goes_On_Without_A_Key) {
  const auto log_of_start = [] {
    Memory_Window window;
    const auto registry = Windows_Registry();
    window.Start(*registry, Windows_Files);
    return window.Log();
  };
  EXPECT_TRUE(log_of_start().starts_with(u"Could not read installed routes!"));
  const Situation empty{"empty", L"", std::nullopt, REG_SZ, nullptr};
  Put(0, empty, empty.Native);
  EXPECT_TRUE(log_of_start().starts_with(u"Could not locate your MSTS installation!"));
}

}  // namespace
}  // namespace rivelt
