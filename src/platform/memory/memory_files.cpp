#include "platform/memory/memory_files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using Item = Memory_Disk::Item;

Item Existing(const Memory_Disk& disk, Text_View path, bool is_folder) {
  Item item = disk.Find(path);
  if (!item.Node || item.Node->Is_Folder != is_folder) throw Failure();
  return item;
}

// own_path is what the path may be taken by: names may change in letter case only.
void Require_Free_Place(const Memory_Disk& disk, Text_View path, Text_View own_path = {}) {
  if (disk.Is_Taken(path) && disk.Find(path).Path != own_path) throw Failure();
}

void Delete(Memory_Disk& disk, Text_View path, bool force) {
  const Item file = Existing(disk, path, false);
  if (file.Node->Is_Read_Only && !force) throw Failure();
  disk.Unlink(file.Path);
}

void Change_Path(Memory_Disk& disk, const Item& item, Text_View path) {
  Require_Free_Place(disk, path, item.Path);
  disk.Unlink(item.Path);
  disk.Link(path, item.Node);
}

class Memory_Lock : public Folder_Lock {
 public:
  Memory_Lock(const Memory_Disk& disk, Text_View path)
      : Disk(disk), Path(path), Locked_Folders(disk.Locked_Folders) {
    Id = Existing(disk, path, true).Node->Id;
    if (!Locked_Folders->insert(Id).second) throw Failure();
  }
  ~Memory_Lock() override { Locked_Folders->erase(Id); }

  bool In_Force() const override {
    const Item item = Disk.Find(Path);
    return item.Node && item.Node->Id == Id;
  }

 private:
  const Memory_Disk& Disk;
  Text Path;
  std::shared_ptr<std::set<std::uint64_t>> Locked_Folders;
  std::uint64_t Id = 0;
};

class Memory_Reader : public Read_Stream {
 public:
  explicit Memory_Reader(Text content) : Content(std::move(content)) {}
  Text ReadAll() override { return std::move(Content); }

 private:
  Text Content;
};

class Memory_Writer : public Write_Stream {
 public:
  Memory_Writer(Memory_Disk& disk, Text_View path, bool overwrite, bool unicode)
      : Disk(disk), Path(path), Overwrite(overwrite), Unicode(unicode) {
    Require_Writable();
  }

  void Write(Text_View text) override { Content += text; }

  void Close() override {
    Require_Writable();
    Disk.Link(Path, Disk.Make_File(Unicode ? To_Utf16(Content) : To_Utf8(Content), !Unicode));
  }

 private:
  void Require_Writable() const {
    if (!Disk.Is_Taken(Path)) return;
    const Item old = Disk.Find(Path);
    if (old.Is_Folder() || old.Node->Is_Read_Only || !Overwrite) throw Failure();
  }

  Memory_Disk& Disk;
  Text Path;
  bool Overwrite;
  bool Unicode;
  Text Content;
};

class Memory_File : public File {
 public:
  Memory_File(Memory_Disk& disk, Text path) : Disk(disk), Path(std::move(path)) {}

  Text name() const override { return Memory_Disk::Name(Path); }

  std::unique_ptr<Read_Stream> OpenAsTextStream(int, int) override {
    auto stream = std::make_unique<Memory_Reader>(Now().Content());
    Disk_Is_Read();
    return stream;
  }

  void Delete(bool force) override {
    Now();
    rivelt::Delete(Disk, Path, force);
  }

  void Move(Text_View target_path) override {
    Change_Path(Disk, Now(), target_path);
    Path = Disk.Find(target_path).Path;
  }

  void Copy(Text_View target_path) override {
    const Item file = Now();
    Require_Free_Place(Disk, target_path);
    const auto copy = Disk.Make_File(file.Node->Bytes, file.Node->Is_Narrow);
    copy->Is_Read_Only = file.Node->Is_Read_Only;
    copy->Modified = file.Node->Modified;
    Disk.Link(target_path, copy);
  }

  void Keep(Text_View target_path) override {
    const Item file = Now();
    if (Disk.Refuses_Links || Disk.Number_Of_Names(*file.Node) != 1) return Copy(target_path);
    Require_Free_Place(Disk, target_path);
    Disk.Link(target_path, file.Node);
  }

  void Take_Mode_Of(Text_View path) override {
    Now().Node->Is_Read_Only = Existing(Disk, path, false).Node->Is_Read_Only;
  }

  File_State State() const override {
    const Item file = Now();
    return {.Size = file.Node->Bytes.size(),
            .Modified = file.Node->Modified,
            .Identity = {1, file.Node->Id},
            .Names = Disk.Number_Of_Names(*file.Node)};
  }

  void Read_Bytes(const std::function<void(std::string_view)>& take) const override {
    constexpr std::size_t most = std::size_t{1} << 20;
    const std::string bytes = Now().Node->Bytes;
    Disk_Is_Read();
    for (std::size_t start = 0; start < bytes.size(); start += most)
      take(std::string_view(bytes).substr(start, most));
  }

 private:
  // Not another file that differs in letter case.
  Item Now() const {
    Item file = Existing(Disk, Path, false);
    if (file.Path != Path) throw Failure();
    return file;
  }

  void Disk_Is_Read() const {
    if (const auto once = std::exchange(Disk.On_Next_Read, nullptr)) once();
  }

  Memory_Disk& Disk;
  Text Path;
};

class Memory_Folder : public Folder {
 public:
  Memory_Folder(Memory_Disk& disk, Text path) : Disk(disk), Path(std::move(path)) {}

  Text name() const override { return Memory_Disk::Name(Path); }
  Collection<Folder> SubFolders() const override { return Items<Folder, Memory_Folder>(true); }
  Collection<File> Files() const override { return Items<File, Memory_File>(false); }

 private:
  template <class Seen, class Made>
  Collection<Seen> Items(bool folders) const {
    std::vector<std::unique_ptr<Seen>> items;
    Existing(Disk, Path, true);
    for (const Item& item : Disk.In_Folder(Path, folders)) {
      items.push_back(std::make_unique<Made>(Disk, item.Path));
    }
    return Collection<Seen>(std::move(items));
  }

  Memory_Disk& Disk;
  Text Path;
};

}  // namespace

std::unique_ptr<File> Memory_Files::GetFile(Text_View path) {
  return std::make_unique<Memory_File>(Disk, Existing(Disk, path, false).Path);
}

std::unique_ptr<Folder> Memory_Files::GetFolder(Text_View path) {
  return std::make_unique<Memory_Folder>(Disk, Existing(Disk, path, true).Path);
}

bool Memory_Files::FolderExists(Text_View path) {
  return Disk.Find(path).Is_Folder();
}

std::unique_ptr<File> Memory_Files::FindFile(Text_View path) {
  return Disk.Find(path).Is_File() ? GetFile(path) : nullptr;
}

void Memory_Files::CreateFolder(Text_View path) {
  Require_Free_Place(Disk, path);
  Disk.Link(path, Disk.Make_Folder());
}

std::unique_ptr<Write_Stream> Memory_Files::CreateTextFile(Text_View path, bool overwrite,
                                                           bool unicode) {
  return std::make_unique<Memory_Writer>(Disk, path, overwrite, unicode);
}

void Memory_Files::DeleteFile(Text_View path, bool force) {
  Delete(Disk, path, force);
}

void Memory_Files::MoveFolder(Text_View path, Text_View target_path) {
  const Item folder = Existing(Disk, path, true);
  // A folder cannot go into itself.
  const Text target_parent = Disk.Find(Memory_Disk::Parent(target_path)).Path;
  if ((target_parent + u"\\").starts_with(folder.Path + u"\\")) throw Failure();
  Change_Path(Disk, folder, target_path);
}

void Memory_Files::DeleteFolder(Text_View path) {
  const Item folder = Existing(Disk, path, true);
  if (!folder.Node->Names.empty()) throw Failure();
  Disk.Unlink(folder.Path);
}

void Memory_Files::Flush(Text_View folder_path) {
  Disk.Flush(folder_path);
}

std::unique_ptr<Folder_Lock> Memory_Files::Lock(Text_View folder_path) {
  return std::make_unique<Memory_Lock>(Disk, folder_path);
}

}  // namespace rivelt
