#include "platform/windows/files.h"

#include <algorithm>
#include <limits>

#include "platform/windows/ansi.h"
#include "text/letter_case.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr DWORD Share_All = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Owned_Handle Open_Handle(const Text& path, DWORD access, DWORD sharing, DWORD flags) {
  const HANDLE handle =
      CreateFileW(To_Wide(path).c_str(), access, sharing, nullptr, OPEN_EXISTING, flags, nullptr);
  return Owned_Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

std::uint64_t Joined(DWORD high, DWORD low) {
  return (std::uint64_t{high} << 32) | low;
}

// A file time counts 100 ns each since 1601. The ends of the range for a time beyond them.
std::int64_t Nanoseconds_Since_1970(const FILETIME& time) {
  constexpr std::int64_t start_of_1970 = 116'444'736'000'000'000;
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() / 100;
  const auto count = static_cast<std::int64_t>(Joined(time.dwHighDateTime, time.dwLowDateTime));
  return std::clamp(count - start_of_1970, -most, most) * 100;
}

// Nothing is under the path; any other error leaves that open.
bool Says_That_Nothing_Is_There(DWORD error) {
  constexpr DWORD errors[] = {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND,       ERROR_INVALID_NAME,
                              ERROR_BAD_PATHNAME,   ERROR_FILENAME_EXCED_RANGE, ERROR_DIRECTORY,
                              ERROR_INVALID_DRIVE};
  return std::ranges::count(errors, error) > 0;
}

class Windows_Source : public Source {
 public:
  Windows_Source(const File_Verbs& verbs, const Text& path)
      : Verbs(verbs),
        Path(path),
        Input(Open_Handle(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                          FILE_FLAG_SEQUENTIAL_SCAN)) {
    LARGE_INTEGER size{};
    if (!Input || !GetFileSizeEx(Input.get(), &size)) throw Refused_By_System(Verbs, Path);
    Bytes = static_cast<std::uint64_t>(size.QuadPart);
  }

  std::uint64_t Size() const override { return Bytes; }

  std::size_t Read(char* bytes, std::size_t room) override {
    constexpr std::size_t most = std::size_t{1} << 26;
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(room, most));
    if (!ReadFile(Input.get(), bytes, wanted, &count, nullptr))
      throw Refused_By_System(Verbs, Path);
    return count;
  }

 private:
  const File_Verbs& Verbs;
  Text Path;
  Owned_Handle Input;
  std::uint64_t Bytes = 0;
};

void Set_Attributes(HANDLE file, DWORD attributes) {
  FILE_BASIC_INFO wanted{};  // what is 0 stays as it is
  wanted.FileAttributes = attributes;
  SetFileInformationByHandle(file, FileBasicInfo, &wanted, sizeof wanted);
}

// A read-only file goes, too, and stays read-only under its other names.
bool Delete_Any(const Text& path) {
  const std::wstring wide = To_Wide(path);
  if (DeleteFileW(wide.c_str())) return true;
  const Owned_Handle file = Open_Handle(path, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES,
                                        Share_All, FILE_FLAG_OPEN_REPARSE_POINT);
  FILE_BASIC_INFO found{};
  if (!file || !GetFileInformationByHandleEx(file.get(), FileBasicInfo, &found, sizeof found))
    return false;
  Set_Attributes(file.get(), FILE_ATTRIBUTE_NORMAL);
  const bool is_deleted = DeleteFileW(wide.c_str()) != FALSE;
  const DWORD error = GetLastError();
  Set_Attributes(file.get(), found.FileAttributes);
  SetLastError(error);
  return is_deleted;
}

bool Move(const Text& path, const Text& target) {
  const auto move = [&] { return MoveFileExW(To_Wide(path).c_str(), To_Wide(target).c_str(), 0); };
  return Patiently([&] { return move() != FALSE; });
}

class Windows_Verbs : public File_Verbs {
 public:
  Windows_Verbs() : File_Verbs(u'\\') {}

  std::optional<Text> Find(Text_View path, Kind kind) override {
    std::wstring full;
    try {
      full = Full_Path(path);
    } catch (const Failure&) {
      return std::nullopt;  // nothing is under a text that is no path
    }
    const auto entry = Look(From_Wide(full));
    if (!entry || entry->What != kind) return std::nullopt;
    return From_Wide(As_On_Disk(std::move(full)));
  }

  Text Place(Text_View path) override { return From_Wide(Full_Path(path)); }

  std::optional<Entry> Look(const Text& path) const override {
    const DWORD attributes = GetFileAttributesW(To_Wide(path).c_str());
    const Owned_Handle file =
        attributes == INVALID_FILE_ATTRIBUTES
            ? nullptr
            : Open_Handle(path, FILE_READ_ATTRIBUTES, Share_All, FILE_FLAG_BACKUP_SEMANTICS);
    BY_HANDLE_FILE_INFORMATION found{};
    if (!file || !GetFileInformationByHandle(file.get(), &found)) {
      if (Says_That_Nothing_Is_There(GetLastError())) return std::nullopt;
      throw Refused_By_System(*this, path);
    }
    const bool is_folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return Entry{.What = is_folder ? Kind::Folder : Kind::File,
                 .Is_Link = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0,
                 .Is_Read_Only = (found.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0,
                 .State = {.Size = Joined(found.nFileSizeHigh, found.nFileSizeLow),
                           .Modified = Nanoseconds_Since_1970(found.ftLastWriteTime),
                           .Came = Nanoseconds_Since_1970(found.ftCreationTime),
                           .Identity = {found.dwVolumeSerialNumber,
                                        Joined(found.nFileIndexHigh, found.nFileIndexLow)},
                           .Names = static_cast<std::uint32_t>(found.nNumberOfLinks)}};
  }

  std::vector<Name_Key> Names(const Text& folder, Kind kind) const override {
    struct Close_Find {
      using pointer = HANDLE;
      void operator()(HANDLE handle) const { FindClose(handle); }
    };
    std::vector<Name_Key> names;
    WIN32_FIND_DATAW entry{};
    const HANDLE handle = FindFirstFileExW(To_Wide(Below(folder, u"*")).c_str(), FindExInfoBasic,
                                           &entry, FindExSearchNameMatch, nullptr, 0);
    // The root of a volume has no entry "." and so can have none at all.
    if (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND) return {};
    if (handle == INVALID_HANDLE_VALUE) throw Refused_By_System(*this, folder);
    const std::unique_ptr<HANDLE, Close_Find> search(handle);
    do {
      const Text name = From_Wide(entry.cFileName);
      if (name != u"." && name != u".." && Kind_Of(folder, name, entry) == kind)
        names.push_back(Key_Of(name));
    } while (FindNextFileW(handle, &entry));
    if (GetLastError() != ERROR_NO_MORE_FILES) throw Refused_By_System(*this, folder);
    return names;
  }

  std::unique_ptr<Source> Open(const Text& path) const override {
    return std::make_unique<Windows_Source>(*this, path);
  }

  std::unique_ptr<Draft> Make(const Text& path) override { return Make_Draft(*this, path); }

  void Make_Folder(const Text& path) override {
    if (!CreateDirectoryW(To_Wide(path).c_str(), nullptr)) throw Refused_By_System(*this, path);
  }

  bool Rename(const Text& path, const Text& target) override {
    if (Move(path, target)) return true;
    const DWORD error = GetLastError();
    if (error == ERROR_NOT_SAME_DEVICE) return false;
    throw Refused_By_System(*this, error == ERROR_ALREADY_EXISTS ? target : path);
  }

  bool Link(const Text& path, const Text& target) override {
    return CreateHardLinkW(To_Wide(target).c_str(), To_Wide(path).c_str(), nullptr) != FALSE;
  }

  // While another program has the file open its name stays after the deletion, so it gets one of
  // ours before.
  void Delete(const Text& path) override {
    const Text aside = Temporary_Beside(path);
    if (Move(path, aside)) {
      if (Delete_Any(aside)) return;
      const DWORD error = GetLastError();
      Move(aside, path);
      SetLastError(error);
    }
    throw Refused_By_System(*this, path);
  }

  void Delete_Folder(const Text& path) override {
    if (!RemoveDirectoryW(To_Wide(path).c_str())) throw Refused_By_System(*this, path);
  }

  void Set_Mode(const Text& path, const Text& model) override {
    const DWORD attributes = GetFileAttributesW(To_Wide(model).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) throw Refused_By_System(*this, model);
    Flush_One(path);  // which cannot be done to a read-only file
    SetFileAttributesW(To_Wide(path).c_str(), attributes);
  }

  void Flush(const Text& folder) override {
    for (const Name_Key& name : Names(folder, Kind::File)) Flush_One(Below(folder, name.Name));
    Flush_One(folder);
  }

  // The lock is a named object of this computer: it holds against every program of ours that runs
  // on it, whichever path leads that program to the folder.
  std::shared_ptr<void> Lock(const Text& folder) override {
    struct Held_Lock {
      Owned_Handle Opened;  // so that no other folder gets its identity
      Owned_Handle Named_Object;
    };
    auto held = std::make_shared<Held_Lock>();
    held->Opened = Open_Handle(folder, 0, Share_All, FILE_FLAG_BACKUP_SEMANTICS);
    const auto entry = Look(folder);
    if (!entry) throw Refused_By_System(*this, folder);
    const std::wstring name = L"Global\\Rivelt-" + std::to_wstring(entry->State.Identity.Volume) +
                              L"-" + std::to_wstring(entry->State.Identity.Index);
    held->Named_Object.reset(CreateMutexW(nullptr, FALSE, name.c_str()));
    const DWORD error = GetLastError();
    // One that another account has made is out of reach.
    if (error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED)
      throw Failure(Text(Locked_By_Another));
    return held->Named_Object ? held : nullptr;
  }

  std::string Narrow(Text_View text) const override { return To_Ansi(text); }

 private:
  Kind Kind_Of(const Text& folder, const Text& name, const WIN32_FIND_DATAW& entry) const {
    if (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) {
      const auto target = Look(Below(folder, name));
      return target ? target->What : Kind::Other;
    }
    return entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ? Kind::Folder : Kind::File;
  }

  // What cannot be opened for writing is flushed by its holder, or was when it became read-only.
  // On many file systems a folder is flushed with its files.
  void Flush_One(const Text& path) const {
    const Owned_Handle file =
        Open_Handle(path, GENERIC_WRITE, Share_All, FILE_FLAG_BACKUP_SEMANTICS);
    if (file && !FlushFileBuffers(file.get()) && Says_Lost(GetLastError()))
      throw Refused_By_System(*this, path);
  }
};

Text Words_Of_System(DWORD error) {
  switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return u"used by another program";
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return u"disk full";
    default:
      break;
  }
  wchar_t words[512] = L"";
  const DWORD size =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     words, static_cast<DWORD>(std::size(words)), nullptr);
  std::wstring_view found(words, size);
  found = found.substr(0, found.find_last_not_of(L"\r\n .") + 1);
  return found.empty() ? Concatenate({u"error", Number_Text(static_cast<Double>(error))})
                       : From_Wide(found);
}

}  // namespace

Failure Refused_By_System(const File_Verbs& verbs, Text_View path) {
  return verbs.Refused(path, Words_Of_System(GetLastError()));
}

bool Says_Lost(DWORD error) {
  constexpr DWORD errors[] = {
      ERROR_DISK_FULL, ERROR_HANDLE_DISK_FULL, ERROR_WRITE_FAULT, ERROR_IO_DEVICE,
      ERROR_CRC,       ERROR_GEN_FAILURE,      ERROR_NOT_READY,   ERROR_WRITE_PROTECT};
  return std::ranges::count(errors, error) > 0;
}

bool Patiently(const std::function<bool()>& step) {
  constexpr ULONGLONG patience = 2000;
  constexpr DWORD pause = 50;
  const ULONGLONG start = GetTickCount64();
  for (;;) {
    if (step()) return true;
    const DWORD error = GetLastError();
    const bool is_held = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
    if (!is_held || GetTickCount64() - start >= patience) return false;
    Sleep(pause);
  }
}

std::unique_ptr<File_System_Object> Windows_Files() {
  return Files_Over(std::make_unique<Windows_Verbs>());
}

}  // namespace rivelt
