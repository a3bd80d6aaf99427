#include "windows_files_fixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/windows/files.h"
#include "platform/windows/win32.h"

namespace rivelt {
namespace {

std::vector<WIN32_FIND_DATAW> Entries_Of(const std::wstring& folder) {
  std::vector<WIN32_FIND_DATAW> entries(1);
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entries.back());
  EXPECT_NE(search, INVALID_HANDLE_VALUE);
  do entries.push_back(entries.back());
  while (FindNextFileW(search, &entries.back()));
  entries.pop_back();
  FindClose(search);
  std::erase_if(entries, [](const auto& entry) {
    const std::wstring name = entry.cFileName;
    return name == L"." || name == L"..";
  });
  return entries;
}

void Remove_All(const std::wstring& folder) {
  for (const WIN32_FIND_DATAW& entry : Entries_Of(folder)) {
    const std::wstring path = folder + L'\\' + entry.cFileName;
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      Remove_All(path);
    } else {
      DeleteFileW(path.c_str());
    }
  }
  RemoveDirectoryW(folder.c_str());
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
  std::wstring path = Native_Root + (name.empty() ? L"" : L"\\") + To_Wide(name);
  std::replace(path.begin(), path.end(), L'/', L'\\');
  return path;
}

void Windows_Machine::Plant(Text_View name, std::string_view bytes) {
  std::ofstream file(std::filesystem::path(Native(name)), std::ios::binary);
  EXPECT_TRUE(file << bytes << std::flush);
}

void Windows_Machine::Plant_Folder(Text_View name) {
  EXPECT_TRUE(CreateDirectoryW(Native(name).c_str(), nullptr));
}

void Windows_Machine::Make_Read_Only(Text_View name) {
  EXPECT_TRUE(SetFileAttributesW(Native(name).c_str(), FILE_ATTRIBUTE_READONLY));
}

std::string Windows_Machine::Bytes(Text_View name) const {
  std::ifstream file(std::filesystem::path(Native(name)), std::ios::binary);
  EXPECT_TRUE(file);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Text> Windows_Machine::Names(Text_View folder) const {
  std::vector<Text> names;
  for (const auto& entry : Entries_Of(Native(folder))) names.push_back(From_Wide(entry.cFileName));
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace rivelt
