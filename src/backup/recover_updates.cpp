#include "backup/recover_updates.h"

#include <algorithm>

#include "backup/backup_name.h"
#include "backup/update_folder.h"
#include "system/ignoring_failures.h"
#include "system/places.h"

namespace rivelt {
namespace {

class Recovery_Of_One {
 public:
  Recovery_Of_One(File_System_Object& files, Update_Folder& folder, Recovery& report)
      : Files(files), Folder(folder), Report(report) {}

  void Run() {
    const auto journal = Folder.Read();
    if (!journal) return Folder.Discard({});
    Require_Route(*journal);
    Folder.Delete_Temporaries();
    switch (Folder.Outcome_Of(*journal)) {
      case Outcome::Untouched:
        return Leave(*journal);
      case Outcome::Finished:
        Folder.Route.Flush();
        for (const Journal_File& file : *journal) Folder.Detach(file);
        Folder.Kept.Flush();
        return Folder.Complete();
      case Outcome::Rolled_Back:
        return Roll_Back(*journal);
    }
  }

 private:
  void Require_Route(const Journal& journal) const {
    const auto in_world = [](const Journal_File& file) {
      return !Folder_In(file.New_Place).empty();
    };
    const bool needs_world = std::ranges::any_of(journal, in_world);
    if (!Folder.Route.Exists()) throw Failure();
    if (needs_world && !Files.FolderExists(Folder.Route.Path(places::World_Folder))) {
      throw Failure();
    }
  }

  // Where somebody has changed files, the originals stay as a backup of its own right.
  void Leave(const Journal& journal) {
    const auto is_original = [&](const Journal_File& file) {
      const Found found = Folder.Found_Of(file);
      return found == Found::Original || found == Found::Either;
    };
    if (std::ranges::all_of(journal, is_original)) return Folder.Discard(journal);
    for (const Journal_File& file : journal) Folder.Detach(file);
    Folder.Kept.Flush();
    Folder.Complete();
  }

  void Roll_Back(const Journal& journal) {
    Journal settled;
    for (const Journal_File& file : In_Order(journal)) {
      Put_Back(file);
      // Where somebody's file stays, the original may have been deleted before it came.
      if (Folder.Found_Of(file) == Found::Original || Folder.Found_Of(file) == Found::Either) {
        settled.push_back(file);
      } else {
        Folder.Detach(file);
      }
    }
    Folder.Route.Flush();
    Folder.Kept.Flush();
    Folder.Discard(settled);
    Report.Was_Rolled_Back = true;
  }

  // What somebody has changed goes back first: as long as another file is new or missing, the next
  // start goes on with a rollback that was killed. Failure, before the first file goes: somebody
  // has taken an original out of the folder.
  Journal In_Order(const Journal& journal) const {
    Journal changed;
    Journal others;
    for (const Journal_File& file : journal) {
      const Found found = Folder.Found_Of(file);
      const bool goes_back =
          found == Found::New || found == Found::Missing || found == Found::Other;
      const bool is_kept = Folder.Kept.Find_Exactly(file.Original_Place) != nullptr;
      if (goes_back && file.Original && !is_kept) throw Failure();
      (found == Found::Other ? changed : others).push_back(file);
    }
    changed.insert(changed.end(), others.begin(), others.end());
    return changed;
  }

  void Put_Back(const Journal_File& file) {
    bool has_place = false;
    std::vector<Update_Folder::Holder> holders = Folder.Holders_Of(file);
    std::partition(holders.begin(), holders.end(),
                   [](const auto& holder) { return holder.Kind == Found::Other; });
    for (const Update_Folder::Holder& holder : holders) {
      if (holder.Kind == Found::New) {
        holder.Held->Delete(true);
      } else if (holder.Kind == Found::Other) {
        Set_Aside(file, *holder.Held);
      } else {
        has_place = true;
      }
    }
    if (has_place || !file.Original) return;
    const auto kept = Folder.Kept.Find_Exactly(file.Original_Place);
    if (!kept) throw Failure();
    kept->Keep(Folder.Route.Path(file.Original_Place));
  }

  // The copy is safe on disk before the file leaves the route.
  void Set_Aside(const Journal_File& file, File& changed) {
    Placed_Files aside(Files, Folder.Kept.Path(Changed_Since_Name));
    const Text place = Concatenate({Folder_In(file.New_Place), changed.name()});
    aside.Make_Folder_Of(place);
    Text target = place;
    for (int number = 2; aside.Find(target); ++number) target = place + Number_Text(number);
    changed.Copy(aside.Path(target));
    aside.Flush();
    Files.Flush(Folder.Path());
    changed.Delete(true);
    Report.Set_Aside.push_back(place);
  }

  File_System_Object& Files;
  Update_Folder& Folder;
  Recovery& Report;
};

std::vector<Text> Unfinished(File_System_Object& files, Text_View root, Text_View route) {
  std::vector<Text> names = Update_Folders(files, root, route);
  std::erase_if(names, [](const Text& name) { return !name.ends_with(Unfinished_Ending); });
  return names;
}

}  // namespace

void Recover_Updates(File_System_Object& files, Text_View root, Text_View route, Recovery& report) {
  std::vector<Text> names = Unfinished(files, root, route);
  std::ranges::reverse(names);
  for (const Text& name : names) {
    Update_Folder folder(files, root, route, name);
    Recovery_Of_One(files, folder, report).Run();
  }
}

std::vector<Text> Routes_With_Unfinished_Updates(File_System_Object& files, Text_View root) {
  std::vector<Text> routes;
  const auto folders = files.GetFolder(places::Backups(root))->SubFolders();
  for (const auto& folder : folders) {
    // Of what cannot be read nothing is known, so that the attempt to recover it reports it.
    bool may_be_unfinished = true;
    Ignoring_Failures(
        [&] { may_be_unfinished = Has_Unfinished_Update(files, root, folder->name()); });
    if (may_be_unfinished) routes.push_back(folder->name());
  }
  return routes;
}

bool Has_Unfinished_Update(File_System_Object& files, Text_View root, Text_View route) {
  return !Unfinished(files, root, route).empty();
}

}  // namespace rivelt
