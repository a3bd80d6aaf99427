#include "platform/memory/memory_files.h"

#include <utility>

#include "platform/files/file_verbs.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using Item = Memory_Disk::Item;

class Memory_Source : public Source {
 public:
  explicit Memory_Source(std::string bytes) : Bytes(std::move(bytes)) {}

  std::uint64_t Size() const override { return Bytes.size(); }
  std::size_t Read(char* bytes, std::size_t room) override {
    const std::size_t count = Bytes.copy(bytes, room, Next);
    Next += count;
    return count;
  }

 private:
  std::string Bytes;
  std::size_t Next = 0;
};

class Memory_Draft : public Draft {
 public:
  Memory_Draft(Memory_Disk& disk, Text path) : Disk(disk), Path(std::move(path)) {}

  void Write(std::string_view bytes) override {
    Disk.Begin_Operation();
    Bytes += bytes;
  }
  void Take_After(const Text& path, bool with_times) override {
    if (Item model = Disk.Find(path); model.Node) Model = model.Node;
    Has_Times = with_times;
  }
  void Flush() override {
    Disk.Begin_Operation();
    Is_Flushed = true;
  }
  bool Take_Name(bool replace) override {
    Disk.Begin_Change();
    if (!replace && Disk.Is_Taken(Path)) return false;
    const auto file = Disk.Make_File(std::move(Bytes));
    if (Model) file->Is_Read_Only = Model->Is_Read_Only;
    if (Model && Has_Times) file->Modified = Model->Modified;
    file->Is_Flushed = Is_Flushed;
    Disk.Link(Path, file);
    return true;
  }

 private:
  Memory_Disk& Disk;
  Text Path;
  std::string Bytes;
  Memory_Disk::Node_Pointer Model;
  bool Has_Times = false;
  bool Is_Flushed = false;
};

class Memory_Verbs : public File_Verbs {
 public:
  explicit Memory_Verbs(Memory_Disk& disk) : File_Verbs(u'\\'), Disk(disk) {}

  std::optional<Text> Find(Text_View path, Kind kind) override {
    Disk.Begin_Operation();
    const Item item = Disk.Find(path);
    const bool fits = kind == Kind::Folder ? item.Is_Folder() : item.Is_File();
    return fits ? std::optional(item.Path) : std::nullopt;
  }

  Text Place(Text_View path) override { return Disk.Place_Of_New(path); }

  std::optional<Entry> Look(const Text& path) const override {
    Disk.Begin_Operation();
    const Item item = Disk.Find(path);
    // Another name that differs in letter case is another file, or none.
    if (!item.Node || (Disk.Tells_Letter_Case_Apart && item.Path != path)) return std::nullopt;
    return Entry{.What = item.Is_Folder() ? Kind::Folder : Kind::File,
                 .Is_Read_Only = item.Node->Is_Read_Only,
                 .State = {.Size = item.Node->Bytes.size(),
                           .Modified = item.Node->Modified,
                           .Came = item.Node->Came,
                           .Identity = {1, item.Node->Id},
                           .Names = Disk.Number_Of_Names(*item.Node)}};
  }

  std::vector<Name_Key> Names(const Text& folder, Kind kind) const override {
    Disk.Begin_Operation();
    Existing(folder);
    std::vector<Name_Key> names;
    for (const Item& item : Disk.In_Folder(folder, kind == Kind::Folder))
      names.push_back(Key_Of(Memory_Disk::Name(item.Path)));
    return names;
  }

  std::unique_ptr<Source> Open(const Text& path) const override {
    Disk.Begin_Operation();
    auto source = std::make_unique<Memory_Source>(Existing(path).Node->Bytes);
    if (const auto once = std::exchange(Disk.On_Next_Read, nullptr)) once();
    return source;
  }

  std::unique_ptr<Draft> Make(const Text& path) override {
    Disk.Begin_Operation();
    return std::make_unique<Memory_Draft>(Disk, path);
  }

  void Make_Folder(const Text& path) override {
    Disk.Begin_Change();
    Require_Free(path);
    Disk.Link(path, Disk.Make_Folder());
  }

  bool Rename(const Text& path, const Text& target) override {
    Disk.Begin_Change();
    const Item item = Existing(path);
    Require_Free(target);
    // A folder cannot go into itself.
    if (target.starts_with(path + u"\\")) throw Refused(path, u"is above its target");
    Disk.Unlink(path);
    Disk.Link(target, item.Node);
    return true;
  }

  bool Link(const Text& path, const Text& target) override {
    Disk.Begin_Change();
    if (Disk.Refuses_Links) return false;
    Require_Free(target);
    Disk.Link(target, Existing(path).Node);
    return true;
  }

  void Delete(const Text& path) override {
    Disk.Begin_Change();
    Existing(path);
    Disk.Unlink(path);
  }

  void Delete_Folder(const Text& path) override {
    Disk.Begin_Change();
    if (!Existing(path).Node->Names.empty()) throw Refused(path, u"not empty");
    Disk.Unlink(path);
  }

  void Set_Mode(const Text& path, const Text& model) override {
    Disk.Begin_Change();
    Existing(path).Node->Is_Read_Only = Existing(model).Node->Is_Read_Only;
  }

  void Flush(const Text& folder) override {
    Disk.Begin_Change();
    Disk.Flush(folder);
  }

  std::shared_ptr<void> Lock(const Text& folder) override {
    Disk.Begin_Operation();
    const std::uint64_t id = Existing(folder).Node->Id;
    if (!Disk.Locked_Folders->insert(id).second) throw Failure(Text(Locked_By_Another));
    const auto release = [locked = Disk.Locked_Folders, id](void*) { locked->erase(id); };
    return {&Disk, release};
  }

  std::string Narrow(Text_View text) const override { return To_Utf8(text); }

 private:
  // Not another that differs in letter case, where that is another.
  Item Existing(const Text& path) const {
    Item item = Disk.Find(path);
    if (!item.Node || (Disk.Tells_Letter_Case_Apart && item.Path != path))
      throw Refused(path, u"has gone");
    return item;
  }

  void Require_Free(const Text& path) const {
    if (Disk.Is_Taken(path)) throw Refused(path, u"exists");
  }

  Memory_Disk& Disk;
};

}  // namespace

std::unique_ptr<File_System_Object> Memory_Files(Memory_Disk& disk) {
  return Files_Over(std::make_unique<Memory_Verbs>(disk));
}

}  // namespace rivelt
