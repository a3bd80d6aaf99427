#include <algorithm>
#include <map>
#include <set>

#include "backup/backup_name.h"
#include "backup/backups.h"
#include "backup/flat_backups.h"
#include "backup/route_update.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

// What a file of the route was before an update.
struct Earlier_File {
  Text Place;
  Text Path;  // of what is kept; empty if the route did not have it
  Text Time;  // of the update
};

// Whether the file refers to track by number.
bool Has_Numbers(Text_View place) {
  const Text name = Fold_Case(Name_In(place));
  if (!Folder_In(place).empty()) return name.ends_with(u".w");
  const auto is_ending = [&](Text_View ending) { return name.ends_with(ending); };
  return name == places::Tsection || std::ranges::any_of(places::Database_Endings, is_ending);
}

class Restoration {
 public:
  Restoration(File_System_Object& files, Text_View root, Text_View route, Text_View time)
      : Files(files),
        Root(root),
        Route(route),
        Time(time),
        In_Route(files, places::Route(root, route)),
        Update(files, root, route) {}

  Restored Run() {
    Twins = In_Route.Twins();
    Collect();
    Note_Newer_Files();
    std::erase_if(Wanted, [this](const auto& item) { return Is_There(item.second); });
    if (Wanted.empty()) return Report;
    Replace();
    return Report;
  }

 private:
  // Names that differ in letter case only are one, unless the route has both.
  Text Key(const Text& place) const {
    const Text folded = Fold_Case(place);
    return Twins.contains(folded) ? place : folded;
  }

  // The earliest update of those at or after the time decides for each file.
  void Collect() {
    std::map<Text, std::vector<Earlier_File>> by_time;
    for (const Flat_Backup_Name& name : Flat_Backups(Files, Root)) {
      if (name.Route == Route) Add_Flat(name, by_time[name.Time]);
    }
    for (const Text& name : Update_Folders(Files, Root, Route)) {
      if (Is_Backup_Time(name)) Add_Journal(name, by_time);
    }
    if (!by_time.contains(Time)) throw Failure();
    for (auto update = by_time.find(Time); update != by_time.end(); ++update) {
      for (const Earlier_File& file : update->second) Wanted.try_emplace(Key(file.Place), file);
    }
  }

  void Add_Flat(const Flat_Backup_Name& name, std::vector<Earlier_File>& kept) const {
    const Text folder = Flat_Backup_Path(Root, name);
    const auto files = Files.GetFolder(folder)->Files();
    for (const auto& file : files) {
      kept.push_back({In_Route.Own_Spelling(Place_In_Route(file->name())),
                      places::Below(folder, file->name()), name.Time});
    }
  }

  void Add_Journal(const Text& time, std::map<Text, std::vector<Earlier_File>>& by_time) const {
    const Update_Folder folder(Files, Root, Route, time);
    const auto journal = folder.Read();
    if (!journal) return;  // it holds only what was set aside
    std::vector<Earlier_File>& kept = by_time[time];
    for (const Journal_File& file : *journal) {
      if (file.Original) {
        kept.push_back({file.Original_Place, folder.Kept.Path(file.Original_Place), time});
      } else {
        kept.push_back({file.New_Place, u"", time});
      }
    }
  }

  bool Is_There(const Earlier_File& file) const {
    if (file.Path.empty()) return In_Route.Find(file.Place) == nullptr;
    const auto found = In_Route.Find_Exactly(file.Place);
    return found && Content_Of(*found) == Content_Of(*Files.GetFile(file.Path));
  }

  void Note_Newer_Files() {
    for (const Text& place : In_Route.Places()) {
      if (!Has_Numbers(place) || Wanted.contains(Key(place))) continue;
      const File_State state = In_Route.Find_Exactly(place)->State();
      if (Backup_Time_Of(state.Modified) > Time) Report.Newer.push_back(place);
    }
  }

  void Replace() {
    std::vector<Replacement> replacements;
    try {
      for (const auto& [key, file] : Wanted) replacements.push_back(Fetched(file));
      Update.Keep_Originals(replacements);
    } catch (const std::exception&) {
      Ignoring_Failures([&] { Update.Give_Up(); });
      throw;
    }
    for (const auto& [key, file] : Wanted) In_Route.Make_Folder_Of(file.Place);
    auto replacement = replacements.begin();
    for (const auto& [key, file] : Wanted) Put_Back(*replacement++, file);
    Update.Complete();
  }

  // The new files are copies of their own, so that editing the route changes no backup.
  Replacement Fetched(const Earlier_File& file) {
    if (file.Path.empty()) return {file.Place, u"", std::nullopt};
    const Placed_Files& update = Update.Begin().Kept;
    const Text folder = update.Path(New_Files_Name);
    if (!Files.FolderExists(folder)) Files.CreateFolder(folder);
    const Text path = places::Below(folder, Trim_Text(Number_Text(++Last_Number)));
    Files.GetFile(file.Path)->Copy(path);
    return {file.Place, path.substr(places::Quenby(Root).size() + 1), std::nullopt};
  }

  void Put_Back(const Replacement& replacement, const Earlier_File& file) {
    const Text target = In_Route.Path(file.Place);
    Update.Require_As_Kept(file.Place);
    if (Update.Has_Original(file.Place)) Files.DeleteFile(target, true);
    if (file.Path.empty()) {
      Report.Removed.push_back(file.Place);
      return;
    }
    const auto source = Files.GetFile(places::Below(places::Quenby(Root), replacement.Source));
    source->Move(target);
    Report.Put_Back.push_back(file.Place);
    if (file.Time != Time) Report.From_Later.push_back(file.Place);
  }

  File_System_Object& Files;
  Text Root;
  Text Route;
  Text Time;
  Placed_Files In_Route;
  Route_Update Update;
  std::set<Text> Twins;
  std::map<Text, Earlier_File> Wanted;
  Restored Report;
  Long Last_Number = 0;
};

}  // namespace

Restored Restore_Backup(File_System_Object& files, Text_View root, Text_View route,
                        Text_View time) {
  return Restoration(files, root, route, time).Run();
}

}  // namespace rivelt
