#include "backup/restore.h"

#include <algorithm>
#include <map>
#include <utility>

#include "backup/backup_time.h"
#include "backup/update.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

Backup Backup_In(const Updated_Route& route, const Text& name) {
  Backup backup;
  backup.Route = route.Folder;
  backup.Time = Time_In(name);
  backup.Kind = Backup::State::Unreadable;
  Ignoring_Failures([&] {
    const Update_Folder folder(route, name);
    folder.Walk([&](const Text&, File& file) {
      ++backup.Files;
      backup.Bytes += file.State().Size;
    });
    const auto journal = folder.Read();
    if (name.ends_with(Unfinished_Ending)) {
      backup.Kind = Backup::State::Unfinished;
    } else if (journal) {
      backup.Kind = Backup::State::Finished;
      backup.Made_By = journal->Made_By;
    } else if (!folder.Has_Journal()) {
      backup.Kind = Backup::State::Set_Aside;
    }
  });
  return backup;
}

// Whether the file refers to track by number.
bool Has_Numbers(Text_View place) {
  const Text name = Fold_Case(Name_In(place));
  if (!Folder_In(place).empty()) return name.ends_with(u".w");
  const auto is_ending = [&](Text_View ending) { return name.ends_with(ending); };
  return name == places::Tsection || std::ranges::any_of(places::Database_Endings, is_ending);
}

class Restoration {
 public:
  Restoration(const Updated_Route& route, Text_View time, Restored& report)
      : Route(route),
        Time(time),
        Report(report),
        In_Route(route.Files, places::Route(route.Root, route.Folder)) {}

  void Run() {
    for (const Text& name : Update_Folders(Route)) {
      if (Is_Backup_Time(name) && name >= Time) Add(name);
    }
    Note_Newer_Files();
    std::vector<Replacement> replacements;
    for (auto& [key, file] : Wanted) {
      if (file.Entry.Original && file.From->first != Time) Report.From_Later.push_back(file.Place);
      if (Is_There(file)) continue;
      (file.Entry.Original ? Report.Put_Back : Report.Removed).push_back(file.Place);
      replacements.push_back(Replacement_By(file));
    }
    if (replacements.empty()) return;
    for (const Replacement& replacement : replacements) In_Route.Make_Folder_Of(replacement.Place);
    Update(Route, Made_By_Restore, replacements, [](Text_View) {});
  }

 private:
  using Folders = std::map<Text, Update_Folder>;

  // What a file of the route was before the earliest update that replaced it.
  struct Earlier_File {
    Text Place;  // as the original is spelled
    Journal_File Entry;
    Folders::iterator From;
  };

  // Failure: the wished backup cannot be read, or is none. A later one is named.
  void Add(const Text& time) {
    const auto folder = Backups.try_emplace(time, Route, time).first;
    std::optional<Journal> journal;
    bool is_readable = false;
    Ignoring_Failures([&] {
      journal = folder->second.Read();
      is_readable = journal || !folder->second.Has_Journal();
    });
    if (!is_readable && time != Time) Report.Unreadable.push_back(time);
    if (!journal && time == Time) throw Failure(u"This backup cannot be read: " + time);
    if (!journal) return;
    for (const Journal_File& file : journal->Files) {
      Placed_Files& files = file.Original ? folder->second.Kept : In_Route;
      const Text place = files.Spelled(file.Place);
      Wanted.try_emplace(Fold_Case(place), Earlier_File{place, file, folder});
    }
  }

  // The name and the journal's own time can both be wrong. A backup from the future hides nothing.
  void Note_Newer_Files() {
    const auto backup = Backups.find(Time);
    if (backup == Backups.end()) throw Failure(u"There is no backup " + Time);
    const Text journal = backup->second.Kept.Path(Journal_Name);
    const Text written = Backup_Time_Of(Route.Files.GetFile(journal)->State().Modified);
    const Text since = std::min(Time, written);
    const bool is_future = since > Backup_Time_After(u"");
    for (const Text_View folder : {Text_View(), places::World_Folder}) {
      const Text path = folder.empty() ? In_Route.Path() : In_Route.Path(folder);
      if (!Route.Files.FolderExists(path)) continue;
      const auto files = Route.Files.GetFolder(path)->Files();
      for (const auto& file : files) {
        const Text name = file->name();
        const Text place = folder.empty() ? name : In_Route.Spelled(places::Below(folder, name));
        if (!Has_Numbers(place) || Wanted.contains(Fold_Case(place))) continue;
        const File_State state = file->State();
        // One that came out of an archive can be older than the update.
        if (is_future || Backup_Time_Of(std::max(state.Modified, state.Came)) > since) {
          Report.Newer.push_back(place);
        }
      }
    }
  }

  bool Is_There(const Earlier_File& file) {
    const File* found = In_Route.Find(file.Place);
    if (!found || !file.Entry.Original) return !found && !file.Entry.Original;
    return found->name() == Name_In(file.Place) && Has_Content(*found, *file.Entry.Original);
  }

  // The new file is a copy of its own, so that editing the route changes no backup.
  static Replacement Replacement_By(Earlier_File& file) {
    Replacement replacement{.Place = file.Place, .Source = {}};
    if (file.Entry.Original) {
      replacement.Make = [&file](const Text& path) {
        file.From->second.Original_Of(file.Entry).Copy(path);
      };
    }
    return replacement;
  }

  const Updated_Route& Route;
  Text Time;
  Restored& Report;
  Placed_Files In_Route;
  Folders Backups;
  std::map<Text, Earlier_File> Wanted;  // by folded place
};

}  // namespace

std::vector<Backup> List_Backups(File_System_Object& files, Text_View root) {
  std::vector<Backup> backups;
  if (!files.FolderExists(places::Backups(root))) return backups;
  const auto routes = files.GetFolder(places::Backups(root))->SubFolders();
  for (const auto& folder : routes) {
    Ignoring_Failures([&] {
      const Updated_Route route{files, Text(root), folder->name()};
      for (const Text& name : Update_Folders(route)) backups.push_back(Backup_In(route, name));
    });
  }
  return backups;
}

std::vector<Text> Finished_Updates(const Updated_Route& route) {
  std::vector<Text> times;
  for (const Text& name : Update_Folders(route)) {
    if (name.ends_with(Unfinished_Ending)) continue;
    Ignoring_Failures([&] {
      if (Update_Folder(route, name).Read()) times.push_back(name);
    });
  }
  return times;
}

void Restore_Backup(const Updated_Route& route, Text_View time, Restored& report) {
  Restoration(route, time, report).Run();
}

}  // namespace rivelt
