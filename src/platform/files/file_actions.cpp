#include "platform/files/file_actions.h"

#include <exception>

#include "system/ignoring_failures.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

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

}  // namespace

Text Existing(File_Verbs& verbs, Text_View path, Kind kind) {
  auto found = verbs.Find(path, kind);
  if (!found) throw Failure(Concatenate({kind == Kind::File ? u"no file " : u"no folder ", path}));
  return *std::move(found);
}

Text Place_Of_Folder(File_Verbs& verbs, Text_View path) {
  if (const auto old = verbs.Find(path, Kind::Folder)) throw verbs.Refused(*old, u"exists");
  return verbs.Place(path);
}

Entry State_Of(const File_Verbs& verbs, const Text& path) {
  const auto entry = verbs.Look(path);
  if (!entry) throw verbs.Refused(path, u"has gone");
  return *entry;
}

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

}  // namespace rivelt
