#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "backup/restore.h"
#include "programs/cli/commands.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

// A backup beside the name by which the user knows its route: the folder's if it is not listed any
// more.
struct Listed_Backup {
  Text Route;
  Backup Content;
};

Text Name_Of(const Console_Window& window, const Text& folder) {
  for (const Installed_Route& route : window.Form().Routes()) {
    if (Fold_Case(route.Folder) == Fold_Case(folder)) return route.Name;
  }
  return folder;
}

// Those that are meant, the oldest of each route first.
std::vector<Listed_Backup> Backups_Of(Console_Window& window, const Backup_Settings& settings) {
  std::optional<Text> wanted;
  if (settings.Route) wanted = Fold_Case(Route_To_Pick(window, *settings.Route).Folder);
  std::vector<Listed_Backup> listed;
  for (const Backup& backup : List_Backups(window.Form().Files(), window.Form().Root())) {
    const bool is_meant = (!wanted || Fold_Case(backup.Route) == *wanted) &&
                          (!settings.Time || From_Utf8(*settings.Time) == backup.Time);
    if (is_meant) listed.push_back({Name_Of(window, backup.Route), backup});
  }
  return listed;
}

std::string Description(const Listed_Backup& backup) {
  std::string line = To_Utf8(backup.Route) + "\t" + To_Utf8(backup.Content.Time) + "\t" +
                     std::to_string(backup.Content.Files) + " files\t" +
                     std::to_string(backup.Content.Bytes) + " bytes";
  if (backup.Content.Kind == Backup::State::Unfinished) line += "\tunfinished";
  if (backup.Content.Kind == Backup::State::Set_Aside) line += "\tset aside, cannot be restored";
  if (backup.Content.Kind == Backup::State::Unreadable) line += "\tcannot be read";
  const Text& maker = backup.Content.Made_By;
  if (!maker.empty() && maker != Made_By_Update) line += "\tmade by a " + To_Utf8(maker);
  return line;
}

void Write_Places(Output& output, const std::vector<Text>& places, std::string_view what) {
  for (const Text& place : places) {
    output.Write(std::string(what) + "\t" + To_Utf8(place) + "\n");
  }
}

void Report_Restored(Output& output, const Listed_Backup& backup, const Restored& restored) {
  Write_Places(output, restored.Put_Back, "Put back");
  Write_Places(output, restored.Removed, "Removed");
  Write_Places(output, restored.From_Later, "From a later update, so it may be on other numbers");
  Write_Places(output, restored.Newer,
               "Left, newer than the backup, so it may be on other numbers");
  Write_Places(output, restored.Unreadable, "Cannot be read, so it was passed over");
  output.Write("Restored\t" + Description(backup) + "\n");
}

}  // namespace

std::string What_Became_Of_It(Change_End end) {
  switch (end) {
    case Change_End::Done:
      return "The update was finished nevertheless.";
    case Change_End::Rolled_Back:
      return "Rolled back; the route is what it was.";
    case Change_End::Unfinished:
      return "It will be rolled back at the next start.";
    case Change_End::Lock_Held:
    case Change_End::Nothing_Touched:
      return "Nothing was touched.";
  }
  return {};
}

int List_Backups(Console_Window& window, Output& output, const Backup_Settings& settings) {
  for (const Listed_Backup& backup : Backups_Of(window, settings)) {
    output.Write(Description(backup) + "\n");
  }
  return Exit_Done;
}

int Restore_Backup(Console_Window& window, Output& output, const Backup_Settings& settings) {
  std::vector<Listed_Backup> backups = Backups_Of(window, settings);
  std::erase_if(backups, [](const Listed_Backup& backup) {
    return backup.Content.Kind != Backup::State::Finished;
  });
  if (backups.empty()) {
    throw Wrong_Usage{
        "There is no such backup, or it cannot be restored; see `rivelt-cli backups`.\n"};
  }
  const Listed_Backup& newest = backups.back();
  Write_Error("Restore: " + Description(newest));
  if (!Is_Confirmed(window)) return Exit_Failure;
  const Restore_Result result = window.Form().Restore(newest.Content.Route, newest.Content.Time);
  window.Report();
  if (result.How != Change_End::Done) {
    Write_Error("Had problems restoring this route! " + What_Became_Of_It(result.How));
    return Exit_Failure;
  }
  window.Restore_Finished = true;
  Report_Restored(output, newest, result.Files);
  return Exit_Done;
}

}  // namespace rivelt
