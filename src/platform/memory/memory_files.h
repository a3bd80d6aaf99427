// A disk in memory behind the file classes: for tests and benchmarks.

#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/file_service.h"
#include "text/letter_case.h"
#include "text/primitives.h"

namespace rivelt {

// What is on the disk, by path. Letter case does not count and "/" is "\". A file that is put there
// brings its folders with it.
class Memory_Disk {
 public:
  struct Item {
    Text Path;
    bool Is_Folder;
    Text Content;
  };

  void Put_Folder(Text_View path) {
    const Text whole = With_Backslashes(path);
    for (std::size_t end = whole.find(u'\\', 1); end != Text::npos;
         end = whole.find(u'\\', end + 1)) {
      Make_Folder(whole.substr(0, end));
    }
    Make_Folder(whole);
  }

  void Put_File(Text_View path, Text_View content) {
    const Text whole = With_Backslashes(path);
    if (const std::size_t name = whole.rfind(u'\\'); name != Text::npos && name > 0) {
      Put_Folder(Text_View(whole).substr(0, name));
    }
    Items[Key(path)] = {whole, false, Text(content)};
  }

  void Remove(Text_View path) {
    const Text key = Key(path);
    std::erase_if(Items, [&](const auto& item) {
      return item.first == key || item.first.starts_with(key + u"\\");
    });
  }

  Item* Find(Text_View path) {
    const auto found = Items.find(Key(path));
    return found == Items.end() ? nullptr : &found->second;
  }

  // The content of the file, or a text that no test writes.
  Text Content(Text_View path) {
    const Item* item = Find(path);
    return item == nullptr || item->Is_Folder ? u"(no such file)" : item->Content;
  }

  // Directly in the folder, in the order of their names.
  std::vector<const Item*> In_Folder(Text_View path, bool folders) const {
    const Text start = Key(path) + u"\\";
    std::vector<const Item*> found;
    for (auto item = Items.lower_bound(start);
         item != Items.end() && item->first.starts_with(start); ++item) {
      const bool is_direct = item->first.find(u'\\', start.size()) == Text::npos;
      if (is_direct && item->second.Is_Folder == folders) found.push_back(&item->second);
    }
    return found;
  }

  std::vector<Text> Names(Text_View folder) const {
    std::vector<Text> names;
    for (const Item* item : In_Folder(folder, false)) names.push_back(Name(item->Path));
    return names;
  }

  static Text Name(Text_View path) { return Text(path.substr(path.rfind(u'\\') + 1)); }

  // Whether any folder of it is locked. The form of an earlier test may outlive its disk.
  const std::shared_ptr<bool> Is_Locked = std::make_shared<bool>(false);

  // Runs once, when the next file is read: the place to act in the middle of a command.
  std::function<void()> On_Next_Read;

 private:
  static Text With_Backslashes(Text_View path) {
    Text whole(path);
    std::ranges::replace(whole, u'/', u'\\');
    return whole;
  }
  static Text Key(Text_View path) { return Fold_Case(With_Backslashes(path)); }
  void Make_Folder(const Text& path) { Items.try_emplace(Key(path), Item{path, true, u""}); }

  std::map<Text, Item> Items;
};

class Memory_Files : public File_System_Object {
 public:
  // The disk must outlive the object and all that it gives.
  explicit Memory_Files(Memory_Disk& disk) : Disk(disk) {}

  std::unique_ptr<File> GetFile(Text_View path) override {
    return std::make_unique<Disk_File>(Disk, Existing(Disk, path, false).Path);
  }
  std::unique_ptr<Folder> GetFolder(Text_View path) override {
    return std::make_unique<Disk_Folder>(Disk, Existing(Disk, path, true).Path);
  }
  bool FolderExists(Text_View path) override {
    const Memory_Disk::Item* item = Disk.Find(path);
    return item != nullptr && item->Is_Folder;
  }
  void CreateFolder(Text_View path) override {
    if (Disk.Find(path) != nullptr) throw Failure();
    Existing(Disk, Parent(path), true);
    Disk.Put_Folder(path);
  }
  std::unique_ptr<Write_Stream> CreateTextFile(Text_View path, bool overwrite, bool) override {
    Existing(Disk, Parent(path), true);
    const Memory_Disk::Item* item = Disk.Find(path);
    if (item != nullptr && (item->Is_Folder || !overwrite)) throw Failure();
    return std::make_unique<Disk_Writer>(Disk, path);
  }
  void DeleteFile(Text_View path, bool) override { Disk.Remove(Existing(Disk, path, false).Path); }
  bool FileExists(Text_View path) override {
    const Memory_Disk::Item* item = Disk.Find(path);
    return item != nullptr && !item->Is_Folder;
  }
  void MoveFolder(Text_View path, Text_View target_path) override {
    const Text source = Existing(Disk, path, true).Path;
    if (Disk.Find(target_path) != nullptr) throw Failure();
    Disk.Put_Folder(target_path);
    for (const Text& name : Disk.Names(source)) {
      Disk.Put_File(Concatenate({target_path, u"\\", name}), Disk.Content(source + u"\\" + name));
    }
    Disk.Remove(source);
  }
  void DeleteFolder(Text_View path) override {
    const Text folder = Existing(Disk, path, true).Path;
    if (!Disk.In_Folder(folder, true).empty() || !Disk.In_Folder(folder, false).empty()) {
      throw Failure();
    }
    Disk.Remove(folder);
  }
  void Flush(Text_View folder_path) override { Existing(Disk, folder_path, true); }
  std::unique_ptr<Folder_Lock> Lock(Text_View folder_path) override {
    Existing(Disk, folder_path, true);
    return std::make_unique<Disk_Lock>(Disk.Is_Locked);
  }

 private:
  static Text_View Parent(Text_View path) { return path.substr(0, path.find_last_of(u"\\/")); }

  static const Memory_Disk::Item& Existing(Memory_Disk& disk, Text_View path, bool is_folder) {
    const Memory_Disk::Item* item = disk.Find(path);
    if (item == nullptr || item->Is_Folder != is_folder) throw Failure();
    return *item;
  }

  struct Disk_Lock : Folder_Lock {
    explicit Disk_Lock(std::shared_ptr<bool> locked) : Locked(std::move(locked)) {
      if (std::exchange(*Locked, true)) throw Failure();
    }
    ~Disk_Lock() override { *Locked = false; }
    bool In_Force() const override { return true; }
    std::shared_ptr<bool> Locked;
  };

  struct Disk_Reader : Read_Stream {
    explicit Disk_Reader(Text content) : Content(std::move(content)) {}
    Text ReadAll() override { return Content; }
    Text Content;
  };

  struct Disk_Writer : Write_Stream {
    Disk_Writer(Memory_Disk& disk, Text_View path) : Disk(disk), Path(path) {}
    void Write(Text_View text) override { Content += text; }
    void Close() override { Disk.Put_File(Path, Content); }
    Memory_Disk& Disk;
    Text Path;
    Text Content;
  };

  struct Disk_File : File {
    Disk_File(Memory_Disk& disk, Text path) : Disk(disk), Path(std::move(path)) {}
    Text name() const override { return Memory_Disk::Name(Path); }
    std::unique_ptr<Read_Stream> OpenAsTextStream(int, int) override {
      Text content = Existing(Disk, Path, false).Content;
      if (const auto once = std::exchange(Disk.On_Next_Read, nullptr)) once();
      return std::make_unique<Disk_Reader>(std::move(content));
    }
    void Delete(bool) override { Disk.Remove(Existing(Disk, Path, false).Path); }
    void Move(Text_View target_path) override {
      const Text content = Existing(Disk, Path, false).Content;
      Existing(Disk, Parent(target_path), true);
      if (Disk.Find(target_path) != nullptr) throw Failure();
      Disk.Remove(Path);
      Disk.Put_File(target_path, content);
      Path = target_path;
    }
    void Copy(Text_View target_path) override {
      const Text content = Existing(Disk, Path, false).Content;
      Existing(Disk, Parent(target_path), true);
      if (Disk.Find(target_path) != nullptr) throw Failure();
      Disk.Put_File(target_path, content);
    }
    void Keep(Text_View target_path) override { Copy(target_path); }
    std::uint64_t Size() const override {
      return sizeof(char16_t) * Existing(Disk, Path, false).Content.size();
    }
    Memory_Disk& Disk;
    Text Path;
  };

  struct Disk_Folder : Folder {
    Disk_Folder(Memory_Disk& disk, Text path) : Disk(disk), Path(std::move(path)) {}
    Text name() const override { return Memory_Disk::Name(Path); }
    Collection<Folder> SubFolders() const override { return Items<Folder, Disk_Folder>(true); }
    Collection<File> Files() const override { return Items<File, Disk_File>(false); }
    template <class Seen, class Made>
    Collection<Seen> Items(bool folders) const {
      std::vector<std::unique_ptr<Seen>> items;
      for (const Memory_Disk::Item* item : Disk.In_Folder(Path, folders)) {
        items.push_back(std::make_unique<Made>(Disk, item->Path));
      }
      return Collection<Seen>(std::move(items));
    }
    Memory_Disk& Disk;
    Text Path;
  };

  Memory_Disk& Disk;
};

}  // namespace rivelt
