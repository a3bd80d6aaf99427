#include "platform/windows/file_actions.h"

#include <exception>
#include <vector>

#include "platform/windows/staged_file.h"

namespace rivelt {
namespace {

std::uint64_t Joined(DWORD high, DWORD low) {
  return (std::uint64_t{high} << 32) | low;
}

// A file time counts 100 ns each since 1601.
std::int64_t Nanoseconds_Since_1970(const FILETIME& time) {
  constexpr std::int64_t start_of_1970 = 116'444'736'000'000'000;
  const auto count = static_cast<std::int64_t>(Joined(time.dwHighDateTime, time.dwLowDateTime));
  return (count - start_of_1970) * 100;
}

void Read_In_Pieces(HANDLE from, const Take_Piece& take) {
  std::vector<char> piece(std::size_t{1} << 20);
  for (;;) {
    DWORD read = 0;
    Require(ReadFile(from, piece.data(), static_cast<DWORD>(piece.size()), &read, nullptr));
    if (read == 0) return;
    take({piece.data(), read});
  }
}

void Fill(Staged_File& copy, const std::wstring& source) {
  const Owned_Handle from = Open_For_Reading(source);
  Read_In_Pieces(from.get(), [&](std::string_view piece) { copy.Write(piece); });
  copy.Copy_Times(from.get());
}

// A file that has given up its name to one of ours, and gets it back unless it is removed.
class Set_Aside {
 public:
  explicit Set_Aside(const std::wstring& path) : Path(path) {
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
      Aside = Temporary_Beside(path, attempt);
      if (MoveFileExW(path.c_str(), Aside.c_str(), 0)) return;
      if (GetLastError() != ERROR_ALREADY_EXISTS) break;
    }
    throw Failure();
  }
  Set_Aside(const Set_Aside&) = delete;
  Set_Aside& operator=(const Set_Aside&) = delete;
  ~Set_Aside() {
    if (!Aside.empty()) MoveFileExW(Aside.c_str(), Path.c_str(), 0);
  }

  void Remove() {
    Delete_File(Aside, true);
    Aside.clear();
  }

 private:
  std::wstring Path;
  std::wstring Aside;
};

void Move_To_Other_Volume(const std::wstring& source, const std::wstring& target) {
  const DWORD attributes = GetFileAttributesW(source.c_str());
  Staged_File copy(target);
  Fill(copy, source);
  Set_Aside old(source);
  copy.Take_Place(false);
  try {
    old.Remove();
  } catch (const std::exception&) {
    Delete_File(target, true);
    throw;
  }
  SetFileAttributesW(target.c_str(), attributes);
}

bool Is_Link(const std::wstring& path) {
  return (GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

}  // namespace

Owned_Handle Open_For_Reading(const std::wstring& path) {
  const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  Require(handle != INVALID_HANDLE_VALUE);
  return Owned_Handle(handle);
}

File_State State_Of_File(const std::wstring& path) {
  const HANDLE handle = CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  Require(handle != INVALID_HANDLE_VALUE);
  const Owned_Handle file(handle);
  BY_HANDLE_FILE_INFORMATION state{};
  Require(GetFileInformationByHandle(file.get(), &state));
  return {
      .Size = Joined(state.nFileSizeHigh, state.nFileSizeLow),
      .Modified = Nanoseconds_Since_1970(state.ftLastWriteTime),
      .Identity = {state.dwVolumeSerialNumber, Joined(state.nFileIndexHigh, state.nFileIndexLow)},
      .Names = static_cast<std::uint32_t>(state.nNumberOfLinks)};
}

void Read_Bytes(const std::wstring& path, const Take_Piece& take) {
  Read_In_Pieces(Open_For_Reading(path).get(), take);
}

void Delete_File(const std::wstring& path, bool force) {
  if (DeleteFileW(path.c_str())) return;
  const DWORD attributes = GetFileAttributesW(path.c_str());
  Require(attributes != INVALID_FILE_ATTRIBUTES);
  Require(force && (attributes & FILE_ATTRIBUTE_READONLY));
  Require(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
  if (DeleteFileW(path.c_str())) return;
  SetFileAttributesW(path.c_str(), attributes);
  throw Failure();
}

void Move_File(const std::wstring& source, const std::wstring& target) {
  if (MoveFileExW(source.c_str(), target.c_str(), 0)) return;
  Require(GetLastError() == ERROR_NOT_SAME_DEVICE);
  Move_To_Other_Volume(source, target);
}

void Copy_File(const std::wstring& source, const std::wstring& target) {
  Staged_File copy(target);
  Fill(copy, source);
  copy.Take_Place(false);
}

void Keep_File(const std::wstring& source, const std::wstring& target) {
  const bool has_one_name = !Is_Link(source) && State_Of_File(source).Names == 1;
  // Not every file system has files of several names.
  if (!has_one_name || !CreateHardLinkW(target.c_str(), source.c_str(), nullptr))
    Copy_File(source, target);
}

void Move_Folder(const std::wstring& source, const std::wstring& target) {
  constexpr ULONGLONG patience = 2000;
  constexpr DWORD pause = 50;
  const ULONGLONG start = GetTickCount64();
  while (!MoveFileExW(source.c_str(), target.c_str(), 0)) {
    // A virus scanner holds a folder for a moment to look at what is new in it.
    const DWORD error = GetLastError();
    Require(error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION);
    Require(GetTickCount64() - start < patience);
    Sleep(pause);
  }
}

}  // namespace rivelt
