#include "platform/memory/memory_files.h"

#include <utility>
#include <vector>

#include "text/utf8.h"

namespace rivelt {
namespace {

using Item = Memory_Disk::Item;

const Item& Existing(const Memory_Disk& disk, Text_View path, bool is_folder) {
  const Item* item = disk.Find(path);
  if (item == nullptr || item->Is_Folder != is_folder) throw Failure();
  return *item;
}

void Require_Place(const Memory_Disk& disk, Text_View path) {
  Memory_Disk::Require_Usable(path);
  Existing(disk, Memory_Disk::Parent(path), true);
}

void Require_Free_Place(const Memory_Disk& disk, Text_View path) {
  Require_Place(disk, path);
  if (disk.Find(path) != nullptr) throw Failure();
}

void Delete(Memory_Disk& disk, Text_View path, bool force) {
  if (Existing(disk, path, false).Is_Read_Only && !force) throw Failure();
  disk.Remove(path);
}

class Memory_Lock : public Folder_Lock {
 public:
  Memory_Lock(const Memory_Disk& disk, Text_View path)
      : Disk(disk), Path(path), Locked_Folders(disk.Locked_Folders) {
    Id = Existing(disk, path, true).Id;
    if (*disk.Is_Locked || !Locked_Folders->insert(Id).second) throw Failure();
  }
  ~Memory_Lock() override { Locked_Folders->erase(Id); }

  bool In_Force() const override {
    const Item* item = Disk.Find(Path);
    return item != nullptr && item->Id == Id;
  }

 private:
  const Memory_Disk& Disk;
  Text Path;
  std::shared_ptr<std::set<int>> Locked_Folders;
  int Id = 0;
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
    if (Unicode) {
      Disk.Put_File(Path, Content);
    } else {
      Disk.Put_Bytes(Path, To_Utf8(Content), true);
    }
  }

 private:
  void Require_Writable() const {
    Require_Place(Disk, Path);
    const Item* old = Disk.Find(Path);
    if (old != nullptr && (old->Is_Folder || old->Is_Read_Only || !Overwrite)) throw Failure();
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
    auto stream = std::make_unique<Memory_Reader>(Existing(Disk, Path, false).Content());
    if (const auto once = std::exchange(Disk.On_Next_Read, nullptr)) once();
    return stream;
  }

  void Delete(bool force) override { rivelt::Delete(Disk, Path, force); }

  void Move(Text_View target_path) override {
    Copy(target_path);
    Disk.Remove(Path);
    Path = Disk.Find(target_path)->Path;
  }

  void Copy(Text_View target_path) override {
    const Item& file = Existing(Disk, Path, false);
    Require_Free_Place(Disk, target_path);
    Disk.Put_Copy(file, target_path);
  }

  void Keep(Text_View target_path) override { Copy(target_path); }

  std::uint64_t Size() const override { return Existing(Disk, Path, false).Bytes.size(); }

 private:
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
    for (const Item* item : Disk.In_Folder(Path, folders)) {
      items.push_back(std::make_unique<Made>(Disk, item->Path));
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
  const Item* item = Disk.Find(path);
  return item != nullptr && item->Is_Folder;
}

bool Memory_Files::FileExists(Text_View path) {
  const Item* item = Disk.Find(path);
  return item != nullptr && !item->Is_Folder;
}

void Memory_Files::CreateFolder(Text_View path) {
  Require_Free_Place(Disk, path);
  Disk.Put_Folder(path);
}

std::unique_ptr<Write_Stream> Memory_Files::CreateTextFile(Text_View path, bool overwrite,
                                                           bool unicode) {
  return std::make_unique<Memory_Writer>(Disk, path, overwrite, unicode);
}

void Memory_Files::DeleteFile(Text_View path, bool force) {
  Delete(Disk, path, force);
}

void Memory_Files::MoveFolder(Text_View path, Text_View target_path) {
  const int id = Existing(Disk, path, true).Id;
  Require_Free_Place(Disk, target_path);
  // A folder cannot go into itself.
  for (Text above = Memory_Disk::Parent(target_path); above != Memory_Disk::Parent(above);
       above = Memory_Disk::Parent(above)) {
    if (Existing(Disk, above, true).Id == id) throw Failure();
  }
  Disk.Rename_Folder(path, target_path);
}

void Memory_Files::DeleteFolder(Text_View path) {
  const Item& folder = Existing(Disk, path, true);
  if (!Disk.In_Folder(path, true).empty() || !Disk.In_Folder(path, false).empty()) throw Failure();
  Disk.Remove(Text(folder.Path));
}

void Memory_Files::Flush(Text_View folder_path) {
  Existing(Disk, folder_path, true);
}

std::unique_ptr<Folder_Lock> Memory_Files::Lock(Text_View folder_path) {
  return std::make_unique<Memory_Lock>(Disk, folder_path);
}

}  // namespace rivelt
