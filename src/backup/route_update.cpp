#include "backup/route_update.h"

#include <algorithm>

#include "backup/backup_name.h"
#include "backup/flat_backups.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

bool Is_Unchanged(const File_State& first, const File_State& second) {
  return first.Size == second.Size && first.Modified == second.Modified;
}

}  // namespace

Update_Folder& Route_Update::Begin() {
  if (!Current) Take_Up_Unfinished();
  if (!Current) Make_Folder();
  return *Current;
}

void Route_Update::Take_Up_Unfinished() {
  for (const Text& name : Update_Folders(Files, Root, Route)) {
    if (!name.ends_with(Unfinished_Ending)) continue;
    Update_Folder folder(Files, Root, Route, name);
    if (const auto journal = folder.Read()) {
      Earlier = *journal;
      Current.emplace(std::move(folder));
    } else {
      folder.Discard({});
    }
  }
}

void Route_Update::Make_Folder() {
  Text newest = Newest_Flat_Backup(Files, Root, Route);
  for (const Text& name : Update_Folders(Files, Root, Route)) {
    newest = std::max(newest, Text(Time_In(name)));
  }
  const Text parent = places::Updates(Root, Route);
  for (const Text& path : {places::Quenby(Root), places::Backups(Root), parent}) {
    if (!Files.FolderExists(path)) Files.CreateFolder(path);
  }
  const Text name = Concatenate({Backup_Time_After(newest), Unfinished_Ending});
  Files.CreateFolder(places::Below(parent, name));
  Current.emplace(Files, Root, Route, name);
}

void Route_Update::Keep_Originals(const std::vector<Replacement>& replacements) {
  Begin();
  try {
    Twins = Current->Route.Twins();
    Carry_Over(replacements);
    for (const Replacement& replacement : replacements) {
      if (!By_Place.contains(replacement.Place)) Add(replacement, Kept(replacement));
    }
    Require_Distinct_Originals();
    Current->Write(Entries);
    Flush_Kept(replacements);
  } catch (const std::exception&) {
    Ignoring_Failures([&] { Give_Up(); });
    throw;
  }
  Current->Discard_Kept(Dropped);
}

// The journal of the failed update, as far as it still holds.
void Route_Update::Carry_Over(const std::vector<Replacement>& replacements) {
  std::map<Text, const Replacement*> staged;
  for (const Replacement& replacement : replacements) staged[replacement.Source] = &replacement;
  for (Journal_File file : Earlier) {
    const Found found = Current->Found_Of(file);
    const auto still_staged = staged.find(file.Source);
    if (still_staged == staged.end()) {
      if (found == Found::Original) {
        Dropped.push_back(file);
      } else if (found == Found::New || found == Found::Either) {
        Entries.push_back(file);
      } else {
        throw Failure();
      }
      continue;
    }
    if (found != Found::Original && found != Found::Either && found != Found::Missing) {
      throw Failure();
    }
    file.New = Content_Of(*Files.GetFile(places::Below(places::Quenby(Root), file.Source)));
    if (const auto original = Current->Route.Find(file.Original_Place)) {
      As_Kept[file.Original_Place] = original->State();
    }
    Add(*still_staged->second, file);
  }
}

void Route_Update::Add(const Replacement& replacement, Journal_File file) {
  By_Place[replacement.Place] = Entries.size();
  Entries.push_back(std::move(file));
}

Journal_File Route_Update::Kept(const Replacement& replacement) {
  Journal_File file;
  file.New_Place = Current->Route.Own_Spelling(replacement.Place);
  file.Source = replacement.Source;
  if (!file.Source.empty()) {
    file.New = Content_Of(*Files.GetFile(places::Below(places::Quenby(Root), file.Source)));
  }
  file.Has_Twin = Twins.contains(Fold_Case(file.New_Place));
  const auto original = Current->Holder_Of(file, file.New_Place);
  if (!original) return file;
  file.Original_Place = Concatenate({Folder_In(file.New_Place), original->name()});
  Keep_File(*original, file);
  const auto& checked = replacement.As_Checked;
  file.Changed_Since_Check = checked && !Is_Unchanged(*checked, As_Kept[file.Original_Place]);
  return file;
}

void Route_Update::Keep_File(File& original, Journal_File& file) {
  const Text& place = file.Original_Place;
  As_Kept[place] = original.State();
  Current->Kept.Make_Folder_Of(place);
  original.Keep(Current->Kept.Path(place));
  Newly_Kept.push_back(file);
  file.Original = Newly_Kept.back().Original =
      Content_Of(*Files.GetFile(Current->Kept.Path(place)));
}

// Two new files for one original: the second would replace the first.
void Route_Update::Require_Distinct_Originals() const {
  std::set<Text> places;
  for (const Journal_File& file : Entries) {
    if (file.Original && !places.insert(file.Original_Place).second) throw Failure();
  }
}

void Route_Update::Flush_Kept(const std::vector<Replacement>& replacements) const {
  std::set<Text> sources;
  for (const Replacement& replacement : replacements) {
    sources.insert(Text(Folder_In(replacement.Source)));
  }
  for (const Text& source : sources) {
    if (!source.empty()) Files.Flush(places::Below(places::Quenby(Root), source));
  }
  Current->Kept.Flush();
  for (const Text& path :
       {places::Updates(Root, Route), places::Backups(Root), places::Quenby(Root), Root}) {
    Files.Flush(path);
  }
}

void Route_Update::Give_Up() {
  if (!Current) return;
  if (Earlier.empty()) {
    Current->Discard(Entries);
    Current.reset();
    return;
  }
  Current->Write(Earlier);
  Files.Flush(Current->Path());
  Current->Discard_Kept(Newly_Kept);
}

const Journal_File& Route_Update::Entry_Of(Text_View place) const {
  return Entries.at(By_Place.at(Text(place)));
}

bool Route_Update::Has_Original(Text_View place) const {
  return Entry_Of(place).Original.has_value();
}

void Route_Update::Require_As_Kept(Text_View place) const {
  const Journal_File& file = Entry_Of(place);
  const auto holder = Current->Holder_Of(file, file.New_Place);
  if (Has_Original(place) != (holder != nullptr)) throw Failure();
  if (!holder) return;
  const File_State state = holder->State();
  const File_State kept = Files.GetFile(Current->Kept.Path(file.Original_Place))->State();
  const bool is_kept_file = state.Identity == kept.Identity;
  if (!is_kept_file && !Is_Unchanged(state, As_Kept.at(file.Original_Place))) throw Failure();
}

std::vector<Text> Route_Update::Changed_Since_Check() const {
  std::vector<Text> places;
  for (const Journal_File& file : Entries) {
    if (file.Changed_Since_Check) places.push_back(file.Original_Place);
  }
  return places;
}

void Route_Update::Complete() {
  const auto mark = Files.CreateTextFile(Current->Kept.Path(All_Moved_Name), true, true);
  mark->Close();
  Current->Kept.Flush();
  Current->Route.Flush();
  Current->Complete();
  Current.reset();
}

void Route_Update::Complete_If_All_Moved() {
  Take_Up_Unfinished();
  if (!Current || Current->Outcome_Of(Earlier) != Outcome::Finished) return;
  Current->Route.Flush();
  for (const Journal_File& file : Earlier) Current->Detach(file);
  Current->Kept.Flush();
  Current->Complete();
  Current.reset();
}

}  // namespace rivelt
