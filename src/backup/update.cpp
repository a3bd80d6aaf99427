#include "backup/update.h"

#include <algorithm>
#include <map>
#include <set>

#include "backup/backup_time.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

// The unfinished update of the route that has a journal. Others go: they have touched nothing.
std::optional<Update_Folder> Failed_Update(const Updated_Route& route) {
  for (const Text& name : Unfinished_Updates(route)) {
    Update_Folder folder(route, name);
    if (folder.Has_Journal()) return folder;
    folder.Remove();
  }
  return std::nullopt;
}

Update_Folder New_Folder(const Updated_Route& route) {
  Text newest;
  for (const Text& name : Update_Folders(route)) newest = std::max(newest, Text(Time_In(name)));
  const Text parent = places::Updates(route.Root, route.Folder);
  for (const Text& path : {places::Quenby(route.Root), places::Backups(route.Root), parent}) {
    if (!route.Files.FolderExists(path)) route.Files.CreateFolder(path);
  }
  const Text name = Concatenate({Backup_Time_After(newest), Unfinished_Ending});
  route.Files.CreateFolder(places::Below(parent, name));
  return Update_Folder(route, name);
}

// The file has neither an original nor a new file any more.
bool Is_Void(const Journal_File& file, const Finding& finding) {
  return !file.Original && finding.What == Found::Original && !finding.Waits;
}

class Updating {
 public:
  Updating(const Updated_Route& route, Update_Folder& folder, const Log_Line& changed)
      : Files(route.Files), Root(route.Root), Route(route), Folder(folder), Changed(changed) {}

  void Keep(Text_View made_by, const std::vector<Replacement>& replacements) {
    Require_Single_Names(replacements);
    Journal journal{Text(made_by), {}};
    if (Folder.Has_Journal()) Take_Up(journal);
    for (const Replacement& replacement : replacements) {
      journal.Files.push_back(Entry_For(replacement));
      Moves.push_back({journal.Files.back(), replacement.Needs_Original, As_Kept});
    }
    for (const auto& [place, file] : Failed) {
      const Finding finding = Folder.Look(file);
      if (Is_Void(file, finding)) continue;
      if (!finding.Is_New()) throw Failure(u"Somebody has changed a file of the update: " + place);
      journal.Files.push_back(file);
    }
    const bool is_new = !Folder.Has_Journal();
    Folder.Write(journal, is_new ? Unflushed_Journal_Name : Journal_Name);
    Flush(journal);
    if (!is_new) return;
    Files.GetFile(Folder.Kept.Path(Unflushed_Journal_Name))->Move(Folder.Kept.Path(Journal_Name));
    Files.Flush(Folder.Path());
  }

  void Move_All() {
    for (const Move& move : Moves) Replace(move);
    Folder.Route.Flush();
    Folder.Finish();
  }

 private:
  struct Move {
    Journal_File File;
    bool Needs_Original;
    std::optional<File_State> As_Kept;  // of the original just before it was kept
  };

  void Take_Up(Journal& journal) {
    auto failed = Folder.Read();
    if (!failed) throw Failure(u"The journal is damaged: " + Folder.Path());
    journal.Made_By = failed->Made_By;
    for (Journal_File& file : failed->Files) Failed.emplace(Fold_Case(file.Place), std::move(file));
  }

  void Require_Single_Names(const std::vector<Replacement>& replacements) {
    std::set<Text> places;
    for (const Replacement& replacement : replacements) {
      const Text& place = replacement.Place;
      if (Folder.Route.Has_Twin(place) || !places.insert(Fold_Case(place)).second) {
        throw Failure(u"There are two files whose names differ in letter case alone: " + place);
      }
    }
  }

  Journal_File Entry_For(const Replacement& replacement) {
    Journal_File file{replacement.Place, replacement.Source, std::nullopt, std::nullopt};
    if (replacement.Make) file.Source = Made(replacement);
    if (!file.Source.empty())
      file.New = Content_Of(*Files.GetFile(Folder.Waiting.Path(file.Source)));
    const auto failed = Failed.extract(Fold_Case(file.Place));
    As_Kept.reset();
    if (failed && failed.mapped().Original) {
      const Finding finding = Folder.Look(failed.mapped());
      if (finding.What == Found::Gone) Folder.Original_Of(failed.mapped());
      if (finding.What == Found::Gone) file.Original = failed.mapped().Original;
      if (finding.What == Found::New || finding.What == Found::Other) {
        throw Failure(u"Somebody has changed a file of the update: " + file.Place);
      }
    }
    if (File* original = Folder.Route.Find(file.Place)) Keep(*original, replacement, file);
    return file;
  }

  Text Made(const Replacement& replacement) {
    const Text folder = Folder.Kept.Path(New_Files_Name);
    if (!Files.FolderExists(folder)) Files.CreateFolder(folder);
    const Text path = places::Below(folder, Trim_Text(Number_Text(++Last_Made)));
    replacement.Make(path);
    return path.substr(Folder.Waiting.Path().size() + 1);
  }

  void Keep(File& original, const Replacement& replacement, Journal_File& file) {
    As_Kept = original.State();
    const Text place = Folder.Route.Spelled(file.Place);
    const bool is_kept = Folder.Kept.Find(place) != nullptr;
    Folder.Kept.Make_Folder_Of(place);
    if (!is_kept) original.Keep(Folder.Kept.Path(place));
    const auto kept = Files.GetFile(Folder.Kept.Path(place));
    file.Original = Content_Of(*kept);
    const bool is_same = kept->State().Identity == As_Kept->Identity;
    if (is_kept && !is_same && Content_Of(original) != file.Original) {
      throw Failure(u"Somebody has changed a kept original: " + Folder.Kept.Path(place));
    }
    const auto& checked = replacement.As_Checked;
    if (checked && !Is_Unchanged(*checked, *As_Kept)) Changed(place);
  }

  void Flush(const Journal& journal) const {
    std::set<Text> sources;
    for (const Journal_File& file : journal.Files) sources.insert(Text(Folder_In(file.Source)));
    for (const Text& source : sources) {
      const Text path = Folder.Waiting.Path(source);
      if (!source.empty() && Files.FolderExists(path)) Files.Flush(path);
    }
    Folder.Kept.Flush();
    for (const Text& path : {Folder.Path(), places::Updates(Root, Route.Folder),
                             places::Backups(Root), places::Quenby(Root), Root}) {
      Files.Flush(path);
    }
  }

  void Replace(const Move& move) {
    const Text target = places::Destination(Root, Route.Folder, move.File.Place);
    Text old = target;
    if (move.As_Kept) {
      File* original = Folder.Route.Find(move.File.Place);
      const File_State now = original->State();
      if (now.Identity != move.As_Kept->Identity || !Is_Unchanged(now, *move.As_Kept)) {
        throw Failure(u"Somebody has changed a file of the update: " + move.File.Place);
      }
      old = Folder.Route.Path(Folder.Route.Spelled(move.File.Place));
    } else if (move.File.Source.empty() || move.File.Original || move.Needs_Original) {
      throw Failure(u"There is no file " + target);  // one that is there now is not in the backup
    }
    if (move.File.Source.empty()) return Files.DeleteFile(old, true);
    const auto source = Files.GetFile(Folder.Waiting.Path(move.File.Source));
    if (move.As_Kept) {
      source->Take_Mode_Of(old);
      Files.DeleteFile(old, true);
    }
    source->Move(target);
  }

  File_System_Object& Files;
  const Text& Root;
  const Updated_Route& Route;
  Update_Folder& Folder;
  const Log_Line& Changed;
  std::map<Text, Journal_File> Failed;  // of the update that is gone on with, by folded place
  std::vector<Move> Moves;
  std::optional<File_State> As_Kept;  // of the replacement at hand
  Long Last_Made = 0;
};

}  // namespace

void Update(const Updated_Route& route, Text_View made_by,
            const std::vector<Replacement>& replacements, const Log_Line& changed) {
  std::optional<Update_Folder> folder = Failed_Update(route);
  const bool goes_on = folder.has_value();
  if (!goes_on) folder.emplace(New_Folder(route));
  Updating updating(route, *folder, changed);
  try {
    updating.Keep(made_by, replacements);
  } catch (const std::exception&) {
    if (!goes_on) Ignoring_Failures([&] { folder->Remove(); });
    throw;
  }
  updating.Move_All();
}

void Finish_If_All_Moved(const Updated_Route& route) {
  std::optional<Update_Folder> folder = Failed_Update(route);
  if (!folder) return;
  auto journal = folder->Read();
  if (!journal) return;
  std::erase_if(journal->Files,
                [&](const Journal_File& file) { return Is_Void(file, folder->Look(file)); });
  if (journal->Files.empty()) return folder->Remove();
  if (folder->Look(*journal) != Outcome::Finished) return;
  folder->Write(*journal, Journal_Name);
  folder->Kept.Flush();
  folder->Route.Flush();
  folder->Finish();
}

}  // namespace rivelt
