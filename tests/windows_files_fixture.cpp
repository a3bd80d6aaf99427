#include "windows_files_fixture.h"

#include "platform/windows/files.h"
#include "platform/windows/win32.h"

namespace rivelt {
namespace {

// In the order in which the folders can be emptied and removed.
void Remove_All(const std::wstring& folder) {
  WIN32_FIND_DATAW entry{};
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = entry.cFileName;
    const std::wstring path = folder + L'\\' + name;
    if (name == L"." || name == L"..") continue;
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      Remove_All(path);
    } else {
      DeleteFileW(path.c_str());
    }
  } while (FindNextFileW(search, &entry));
  FindClose(search);
  RemoveDirectoryW(folder.c_str());
}

Owned_Handle Open(const std::wstring& path, DWORD access, DWORD disposition) {
  const HANDLE handle =
      CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    ADD_FAILURE() << "cannot open a file, error " << GetLastError();
    return {};
  }
  return Owned_Handle(handle);
}

std::unique_ptr<Machine_Under_Test> Make_Windows_Machine() {
  return std::make_unique<Windows_Machine>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Windows, Files_Contract, testing::Values(&Make_Windows_Machine),
                         [](const auto&) { return "Machine"; });

Windows_Machine::Windows_Machine() : System(Windows_Files()) {
  static int count = 0;
  wchar_t folder[MAX_PATH + 1] = {};
  GetTempPathW(MAX_PATH + 1, folder);
  Native_Root = std::wstring(L"\\\\?\\") + folder + L"rivelt-test-" +
                std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
  EXPECT_TRUE(CreateDirectoryW(Native_Root.c_str(), nullptr));
}

Windows_Machine::~Windows_Machine() {
  Remove_All(Native_Root);
}

Text Windows_Machine::Root() const {
  return From_Wide(Native_Root).substr(4);
}

std::wstring Windows_Machine::Native(Text_View name) const {
  std::wstring path = Native_Root + L'\\' + To_Wide(name);
  for (wchar_t& unit : path) {
    if (unit == L'/') unit = L'\\';
  }
  return path;
}

void Windows_Machine::Plant(Text_View name, std::string_view bytes) {
  const Owned_Handle file = Open(Native(name), GENERIC_WRITE, CREATE_ALWAYS);
  DWORD written = 0;
  WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  EXPECT_EQ(written, bytes.size());
}

void Windows_Machine::Plant_Folder(Text_View name) {
  EXPECT_TRUE(CreateDirectoryW(Native(name).c_str(), nullptr));
}

void Windows_Machine::Make_Read_Only(Text_View name) {
  EXPECT_TRUE(SetFileAttributesW(Native(name).c_str(), FILE_ATTRIBUTE_READONLY));
}

std::string Windows_Machine::Bytes(Text_View name) const {
  const Owned_Handle file = Open(Native(name), GENERIC_READ, OPEN_EXISTING);
  std::string bytes(GetFileSize(file.get(), nullptr), '\0');
  DWORD read = 0;
  EXPECT_TRUE(ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr));
  return bytes;
}

std::vector<Text> Windows_Machine::Names(Text_View folder) const {
  std::vector<Text> names;
  WIN32_FIND_DATAW entry{};
  const std::wstring path = folder.empty() ? Native_Root : Native(folder);
  const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &entry);
  EXPECT_NE(search, INVALID_HANDLE_VALUE);
  do {
    const Text name = From_Wide(entry.cFileName);
    if (name != u"." && name != u"..") names.push_back(name);
  } while (FindNextFileW(search, &entry));
  FindClose(search);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace rivelt
