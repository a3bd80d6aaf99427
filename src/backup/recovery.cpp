#include "backup/recovery.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

class Recovery {
 public:
  Recovery(const Updated_Route& route, Text_View name, const Log_Line& report)
      : Files(route.Files), Route_Folder(route.Folder), Folder(route, name), Report(report) {}

  Outcome Run() {
    const auto journal = Folder.Read();
    if (!journal) {
      if (Folder.Has_Journal() && !Folder.Is_All_In_Route()) {
        throw Failure(u"The journal is damaged: " + Folder.Path());
      }
      Folder.Remove();
      return Outcome::Untouched;
    }
    Prepare(*journal);
    const Outcome outcome = Folder.Look(*journal);
    if (outcome == Outcome::Rolled_Back) Put_Back_All(*journal);
    Folder.Route.Flush();
    if (outcome == Outcome::Rolled_Back) {
      Line(u"Rolled back an unfinished update: ", Route_Folder);
      // The route is whole; what is left of the folder goes at the next start.
      Ignoring_Failures([&] { Folder.Remove(); });
      return outcome;
    }
    outcome == Outcome::Untouched ? Folder.Remove() : Folder.Finish();
    if (outcome == Outcome::Left) {
      Line(u"Left an unfinished update, every file has changed since: ", Route_Folder);
    }
    return outcome;
  }

 private:
  void Line(Text_View line, Text_View what) const { Report(Concatenate({line, what})); }

  // Every folder of the route is there, and nothing of ours in the making is.
  void Prepare(const Journal& journal) {
    Delete_Temporaries(Folder.Path());
    for (const Journal_File& file : journal.Files) {
      const Text in_route = Folder.Route.Path(Folder_In(file.Place));
      if (!Files.FolderExists(in_route)) throw Failure(u"There is no folder " + in_route);
      Delete_Temporaries(in_route);
      Delete_Temporaries(Folder.Kept.Path(Folder_In(file.Place)));
      Delete_Temporaries(Folder.Waiting.Path(Folder_In(file.Source)));
    }
  }

  void Delete_Temporaries(const Text& path) {
    if (!Cleared.insert(path).second || !Files.FolderExists(path)) return;
    const auto files = Files.GetFolder(path)->Files();
    for (const auto& file : files) {
      if (!file->name().starts_with(Temporary_Prefix)) continue;
      // One that another program holds open can go later.
      Ignoring_Failures([&] { file->Delete(true); });
    }
  }

  // An original stays, and what somebody has put where there was no file or before the update came.
  static bool Stays(const Journal_File& file, const Finding& found) {
    return found.What == Found::Original ||
           (found.What == Found::Other && (found.Waits || !file.Original));
  }

  // An original is ready beside its place, and what is in its way safe, before it gets the place: a
  // loss of power leaves nothing that nobody knows.
  void Put_Back_All(const Journal& journal) {
    std::vector<const Journal_File*> due;
    for (const Journal_File& file : journal.Files) {
      if (Stays(file, Folder.Look(file))) continue;
      if (file.Original) Folder.Original_Of(file);
      due.push_back(&file);
    }
    std::vector<std::unique_ptr<File>> ready;
    for (const Journal_File* file : due) ready.push_back(Ready(*file, ready.size()));
    if (Has_Copies) Folder.Route.Flush();
    for (std::size_t i = 0; i < due.size(); ++i) {
      if (!Make_Way(*due[i]) && ready[i]) std::exchange(ready[i], nullptr)->Delete(true);
    }
    for (std::size_t i = 0; i < due.size(); ++i) {
      if (ready[i]) ready[i]->Move(Folder.Route.Path(Folder.Kept.Spelled(due[i]->Place)));
    }
  }

  // Null if there was no file.
  std::unique_ptr<File> Ready(const Journal_File& file, std::size_t number) {
    if (!file.Original) return nullptr;
    File& original = Folder.Original_Of(file);
    const Text name =
        Concatenate({Temporary_Prefix, u"original", Number_Text(static_cast<Long>(number))});
    const Text path =
        Folder.Route.Path(Concatenate({Folder_In(Folder.Kept.Spelled(file.Place)), name}));
    original.Keep(path);
    auto ready = Files.GetFile(path);
    Has_Copies = Has_Copies || ready->State().Identity != original.State().Identity;
    return ready;
  }

  // Whether the place is free. More than one file fits it if somebody has added one in another
  // letter case.
  bool Make_Way(const Journal_File& file) {
    while (true) {
      const Finding now = Folder.Look(file);
      if (Stays(file, now)) return false;
      File* found = Folder.Route.Find(file.Place);
      if (!found) return true;
      if (now.What == Found::Other) {
        Set_Aside(*found, Folder.Route.Spelled(file.Place));
      } else {
        found->Delete(true);
      }
      Folder.Route.Forget(file.Place);
    }
  }

  void Set_Aside(File& changed, const Text& place) {
    Aside.Make_Folder_Of(u"");
    Aside.Make_Folder_Of(place);
    Text target = place;
    for (int number = 2; Aside.Find(target); ++number) {
      target = Concatenate({place, u" ", Trim_Text(Number_Text(number))});
    }
    Move_Safely(changed, Aside.Path(target));
    Aside.Add(target);
    Line(u"Set aside a file that was changed since the update: ", place);
  }

  // A second name where the system can, so that nothing written to it is lost; else a copy, made
  // again if the file has changed before it could go. No loss of power leaves it without a name.
  void Move_Safely(File& changed, const Text& target) const {
    for (bool is_safe = false; !is_safe;) {
      const File_State before = changed.State();
      changed.Keep(target);
      Aside.Flush();
      Files.Flush(Folder.Path());
      const File_State now = changed.State();
      const auto kept = Files.GetFile(target);
      is_safe = kept->State().Identity == now.Identity ||
                (before.Identity == now.Identity && Is_Unchanged(before, now));
      if (!is_safe) kept->Delete(true);
    }
    changed.Delete(true);
  }

  File_System_Object& Files;
  Text Route_Folder;
  Update_Folder Folder;
  const Log_Line& Report;
  Placed_Files Aside{Files, Folder.Kept.Path(Changed_Since_Name)};
  std::set<Text> Cleared;  // folders
  bool Has_Copies = false;
};

}  // namespace

Outcome Recover_Updates(const Updated_Route& route, const Log_Line& report) {
  if (!route.Files.FolderExists(places::Route(route.Root, route.Folder))) return Outcome::Untouched;
  const std::vector<Text> names = Unfinished_Updates(route);
  Outcome of_newest = Outcome::Untouched;
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    const Outcome outcome = Recovery(route, *name, report).Run();
    if (name == names.rbegin()) of_newest = outcome;
  }
  return of_newest;
}

std::vector<Text> Routes_With_Unfinished_Updates(File_System_Object& files, Text_View root) {
  std::vector<Text> routes;
  if (!files.FolderExists(places::Backups(root))) return routes;
  const auto folders = files.GetFolder(places::Backups(root))->SubFolders();
  for (const auto& folder : folders) {
    // An unreadable folder may be unfinished; recovering it reports the error.
    bool may_be_unfinished = true;
    Ignoring_Failures([&] {
      may_be_unfinished = !Unfinished_Updates({files, Text(root), folder->name()}).empty();
    });
    if (may_be_unfinished) routes.push_back(folder->name());
  }
  return routes;
}

}  // namespace rivelt
