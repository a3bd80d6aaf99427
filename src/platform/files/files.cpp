#include "platform/files/file_verbs.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "system/ignoring_failures.h"
#include "text/primitives.h"
#include "text/utf16.h"

namespace rivelt {
namespace {

using Shared_Verbs = std::shared_ptr<File_Verbs>;

std::unique_ptr<Draft> Copied(File_Verbs& verbs, const Text& path, const Text& target) {
  constexpr std::size_t size = std::size_t{1} << 16;
  const auto piece = std::make_unique_for_overwrite<char[]>(size);
  const auto source = verbs.Open(path);
  auto draft = verbs.Make(target);
  while (const std::size_t count = source->Read(piece.get(), size))
    draft->Write({piece.get(), count});
  draft->Take_After(path, true);
  return draft;
}

void Take_Free_Name(const File_Verbs& verbs, Draft& draft, const Text& target) {
  if (!draft.Take_Name(false)) throw verbs.Refused(target, u"exists");
}

// A file that has given up its name to one of ours, and gets it back unless it is removed.
class Set_Aside {
 public:
  Set_Aside(File_Verbs& verbs, const Text& path)
      : Verbs(verbs), Path(path), Aside(Verbs.Temporary_Beside(path)) {
    Verbs.Rename(Path, Aside);
  }
  Set_Aside(const Set_Aside&) = delete;
  Set_Aside& operator=(const Set_Aside&) = delete;
  ~Set_Aside() {
    if (!Is_Removed) Ignoring_Failures([&] { Verbs.Rename(Aside, Path); });
  }

  void Remove() {
    Verbs.Delete(Aside);
    Is_Removed = true;
  }

 private:
  File_Verbs& Verbs;
  Text Path;
  Text Aside;
  bool Is_Removed = false;
};

void Move_By_Copy(File_Verbs& verbs, const Text& path, const Text& target) {
  const auto copy = Copied(verbs, path, target);
  copy->Flush();  // the two disks are written independently of each other
  Set_Aside source(verbs, path);
  Take_Free_Name(verbs, *copy, target);
  try {
    source.Remove();
  } catch (const std::exception&) {
    verbs.Delete(target);
    throw;
  }
}

// The native path of the program's path. Failure: there is nothing of that kind.
Text Existing(File_Verbs& verbs, Text_View path, Kind kind) {
  auto found = verbs.Find(path, kind);
  if (!found) throw Failure(Concatenate({kind == Kind::File ? u"no file " : u"no folder ", path}));
  return *std::move(found);
}

// Failure: there is a folder of that name, in any letter case.
Text Place_Of_Folder(File_Verbs& verbs, Text_View path) {
  if (const auto old = verbs.Find(path, Kind::Folder)) throw verbs.Refused(*old, u"exists");
  return verbs.Place(path);
}

Entry State_Of(const File_Verbs& verbs, const Text& path) {
  const auto entry = verbs.Look(path);
  if (!entry) throw verbs.Refused(path, u"has gone");
  return *entry;
}

// Reads until all room is filled or the source ends. The number of bytes read.
std::size_t Fill(Source& source, char* bytes, std::size_t room) {
  std::size_t filled = 0;
  while (filled < room) {
    const std::size_t count = source.Read(bytes + filled, room - filled);
    if (count == 0) break;
    filled += count;
  }
  return filled;
}

void Delete_File(File_Verbs& verbs, const Text& path, bool force) {
  if (!force && State_Of(verbs, path).Is_Read_Only) throw verbs.Refused(path, u"read-only");
  verbs.Delete(path);
}

void Copy_File(File_Verbs& verbs, const Text& path, const Text& target) {
  Take_Free_Name(verbs, *Copied(verbs, path, target), target);
}

void Keep_File(File_Verbs& verbs, const Text& path, const Text& target) {
  const Entry file = State_Of(verbs, path);
  const bool may_have_two = !file.Is_Link && file.State.Names == 1;
  if (!may_have_two || !verbs.Link(path, target)) Copy_File(verbs, path, target);
}

void Move_File(File_Verbs& verbs, const Text& path, const Text& target) {
  // A link that was renamed into another folder might lead nowhere from there.
  if (State_Of(verbs, path).Is_Link || !verbs.Rename(path, target))
    Move_By_Copy(verbs, path, target);
}

class Reader : public Read_Stream {
 public:
  Reader(Shared_Verbs verbs, Text path)
      : Verbs(std::move(verbs)), Path(std::move(path)), Input(Verbs->Open(Path)) {}

  Text ReadAll() override {
    constexpr std::size_t most = Unit_Size * std::numeric_limits<Position>::max();
    const std::uint64_t expected = Input->Size();
    if (expected > most) throw Verbs->Refused(Path, u"too large");
    Utf16_Content content;
    content.Size = Fill(*Input, reinterpret_cast<char*>(&content.First), Unit_Size);
    // The file may grow or shrink meanwhile: it ends where nothing more can be read.
    std::size_t units = static_cast<std::size_t>(expected) / Unit_Size;
    while (content.Size == (content.Rest.size() + 1) * Unit_Size) {
      if (content.Size > most) throw Verbs->Refused(Path, u"too large");
      const std::size_t filled = content.Rest.size() * Unit_Size;
      content.Rest.resize(++units);
      char* const rest = reinterpret_cast<char*>(content.Rest.data());
      content.Size += Fill(*Input, rest + filled, content.Rest.size() * Unit_Size - filled);
      units *= 2;
    }
    return Decode_Utf16(std::move(content));
  }

 private:
  Shared_Verbs Verbs;
  Text Path;
  std::unique_ptr<Source> Input;
};

class Writer : public Write_Stream {
 public:
  Writer(Shared_Verbs verbs, Text path, bool overwrite, bool unicode)
      : Verbs(std::move(verbs)), Path(std::move(path)), Overwrite(overwrite), Unicode(unicode) {
    const auto old = Verbs->Look(Path);
    if (old && (!Overwrite || old->What != Kind::File)) throw Verbs->Refused(Path, u"exists");
    if (old && old->Is_Read_Only) throw Verbs->Refused(Path, u"read-only");
    Replaces = old.has_value();
    Output = Verbs->Make(Path);
  }

  void Write(Text_View text) override {
    Is_Whole = false;
    if (Unicode && std::exchange(Is_First, false)) Output->Write(Utf16_Mark);
    Unicode ? Output->Write(Bytes_Of(text)) : Output->Write(Verbs->Narrow(text));
    Is_Whole = true;
  }

  void Close() override {
    if (!std::exchange(Is_Whole, false)) throw Failure();
    if (Replaces) Output->Take_After(Path, false);
    if (!Output->Take_Name(false)) {
      if (!Overwrite) throw Verbs->Refused(Path, u"exists");
      // Or a loss of power could leave neither the old content nor the new.
      Output->Flush();
      Output->Take_Name(true);
    }
    Output.reset();
  }

 private:
  Shared_Verbs Verbs;
  Text Path;
  bool Overwrite;
  bool Unicode;
  bool Replaces = false;
  bool Is_First = true;
  bool Is_Whole = true;
  std::unique_ptr<Draft> Output;
};

class System_File : public File {
 public:
  System_File(Shared_Verbs verbs, Text path) : Verbs(std::move(verbs)), Path(std::move(path)) {}

  Text name() const override { return Verbs->Name_Of(Path); }
  std::unique_ptr<Read_Stream> OpenAsTextStream(int /*mode*/, int /*format*/) override {
    return std::make_unique<Reader>(Verbs, Path);
  }
  void Delete(bool force) override { Delete_File(*Verbs, Path, force); }
  void Move(Text_View target_path) override {
    Text target = Verbs->Place(target_path);
    Move_File(*Verbs, Path, target);
    Path = std::move(target);
  }
  void Copy(Text_View target_path) override { Copy_File(*Verbs, Path, Verbs->Place(target_path)); }
  void Keep(Text_View target_path) override { Keep_File(*Verbs, Path, Verbs->Place(target_path)); }
  void Take_Mode_Of(Text_View path) override {
    Verbs->Set_Mode(Path, Existing(*Verbs, path, Kind::File));
  }
  File_State State() const override { return State_Of(*Verbs, Path).State; }

  void Read_Bytes(const std::function<void(std::string_view)>& take) const override {
    // Not cleared: most files are much smaller, and thousands of them are read.
    constexpr std::size_t size = std::size_t{1} << 16;
    const auto piece = std::make_unique_for_overwrite<char[]>(size);
    const auto source = Verbs->Open(Path);
    for (std::size_t count = size; count == size;) {
      count = Fill(*source, piece.get(), size);
      if (count > 0) take({piece.get(), count});
    }
  }

 private:
  Shared_Verbs Verbs;
  Text Path;
};

class System_Folder : public Folder {
 public:
  System_Folder(Shared_Verbs verbs, Text path) : Verbs(std::move(verbs)), Path(std::move(path)) {}

  Text name() const override { return Verbs->Name_Of(Path); }
  Collection<Folder> SubFolders() const override {
    return Items<Folder, System_Folder>(Kind::Folder);
  }
  Collection<File> Files() const override { return Items<File, System_File>(Kind::File); }

 private:
  template <class Item, class System_Item>
  Collection<Item> Items(Kind kind) const {
    std::vector<Name_Key> names = Verbs->Names(Path, kind);
    std::ranges::sort(names);
    // No path leads to the others, so they would pass for this one.
    if (kind == Kind::Folder) {
      const auto alike = [](const Name_Key& name, const Name_Key& other) {
        return name.Folded == other.Folded;
      };
      names.erase(std::unique(names.begin(), names.end(), alike), names.end());
    }
    std::vector<std::unique_ptr<Item>> items;
    items.reserve(names.size());
    for (const Name_Key& key : names)
      items.push_back(std::make_unique<System_Item>(Verbs, Verbs->Below(Path, key.Name)));
    return Collection<Item>(std::move(items));
  }

  Shared_Verbs Verbs;
  Text Path;
};

class System_Lock : public Folder_Lock {
 public:
  System_Lock(Shared_Verbs verbs, Text path)
      : Verbs(std::move(verbs)),
        Path(std::move(path)),
        Held(Verbs->Lock(Path)),
        Identity(State_Of(*Verbs, Path).State.Identity) {}

  bool In_Force() const override {
    const auto folder = Verbs->Look(Path);
    return folder && folder->What == Kind::Folder && folder->State.Identity == Identity;
  }

 private:
  Shared_Verbs Verbs;
  Text Path;
  std::shared_ptr<void> Held;
  File_Identity Identity;
};

class System_Files : public File_System_Object {
 public:
  explicit System_Files(Shared_Verbs verbs) : Verbs(std::move(verbs)) {}

  void Set_Root(Text_View path) override { Verbs->Set_Root(path); }

  std::unique_ptr<File> GetFile(Text_View path) override {
    return std::make_unique<System_File>(Verbs, Existing(*Verbs, path, Kind::File));
  }

  std::unique_ptr<Folder> GetFolder(Text_View path) override {
    return std::make_unique<System_Folder>(Verbs, Existing(*Verbs, path, Kind::Folder));
  }

  bool FolderExists(Text_View path) override { return Verbs->Find(path, Kind::Folder).has_value(); }

  std::unique_ptr<File> FindFile(Text_View path) override {
    auto found = Verbs->Find(path, Kind::File);
    return found ? std::make_unique<System_File>(Verbs, *std::move(found)) : nullptr;
  }

  void CreateFolder(Text_View path) override { Verbs->Make_Folder(Place_Of_Folder(*Verbs, path)); }

  std::unique_ptr<Write_Stream> CreateTextFile(Text_View path, bool overwrite,
                                               bool unicode) override {
    return std::make_unique<Writer>(Verbs, Verbs->Place(path), overwrite, unicode);
  }

  void DeleteFile(Text_View path, bool force) override {
    Delete_File(*Verbs, Existing(*Verbs, path, Kind::File), force);
  }

  void MoveFolder(Text_View path, Text_View target_path) override {
    const Text folder = Existing(*Verbs, path, Kind::Folder);
    if (!Verbs->Rename(folder, Place_Of_Folder(*Verbs, target_path)))
      throw Verbs->Refused(folder, u"on another disk");
  }

  void DeleteFolder(Text_View path) override {
    Verbs->Delete_Folder(Existing(*Verbs, path, Kind::Folder));
  }

  void Flush(Text_View folder_path) override {
    Verbs->Flush(Existing(*Verbs, folder_path, Kind::Folder));
  }

  std::unique_ptr<Folder_Lock> Lock(Text_View folder_path) override {
    return std::make_unique<System_Lock>(Verbs, Existing(*Verbs, folder_path, Kind::Folder));
  }

 private:
  Shared_Verbs Verbs;  // files and folders may outlive this object
};

}  // namespace

std::unique_ptr<File_System_Object> Files_Over(std::unique_ptr<File_Verbs> verbs) {
  return std::make_unique<System_Files>(std::move(verbs));
}

}  // namespace rivelt
