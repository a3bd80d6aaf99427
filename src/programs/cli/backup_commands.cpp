#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "backup/backups.h"
#include "programs/cli/commands.h"
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
  const auto& routes = window.Form().Routes();
  const auto found = std::ranges::find(routes, folder, &Installed_Route::Folder);
  return found == routes.end() ? folder : found->Name;
}

// Those that are meant, the oldest of each route first.
std::vector<Listed_Backup> Backups_Of(Console_Window& window, const Backup_Settings& settings) {
  std::optional<Text> wanted;
  if (settings.Route) wanted = Route_To_Pick(window, *settings.Route).Folder;
  std::vector<Listed_Backup> listed;
  for (const Backup& backup : List_Backups(window.Form().Files(), window.Form().Root())) {
    const bool is_meant = (!wanted || backup.Route == *wanted) &&
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
  return line;
}

void Write_Places(Output& output, const std::vector<Text>& places, std::string_view what) {
  for (const Text& place : places) {
    output.Write(std::string(what) + "\t" + To_Utf8(place) + "\n");
  }
}

int Report_Failure(std::string_view message) {
  Write_Error(message);
  return Exit_Failure;
}

int Report_Failed_Restore(Restore_Result::End how) {
  const auto failed = [](const std::string& what_of_it) {
    return Report_Failure("Had problems restoring this route! " + what_of_it);
  };
  switch (how) {
    case Restore_Result::End::Lock_Held:
      return failed("Another program is at work on this installation; nothing was touched.");
    case Restore_Result::End::Rolled_Back:
      return failed("What was replaced is back.");
    case Restore_Result::End::Unfinished:
      return failed("It will be rolled back at the next start.");
    default:
      return failed("Nothing was touched.");
  }
}

void Report_Restored(Output& output, const Listed_Backup& backup, const Restored& restored) {
  Write_Places(output, restored.Put_Back, "Put back");
  Write_Places(output, restored.Removed, "Removed");
  Write_Places(output, restored.From_Later, "From a later update, so it may be on other numbers");
  Write_Places(output, restored.Newer,
               "Left, newer than the backup, so it may be on other numbers");
  output.Write("Restored\t" + Description(backup) + "\n");
}

}  // namespace

int List_Backups(Console_Window& window, Output& output, const Backup_Settings& settings) try {
  for (const Listed_Backup& backup : Backups_Of(window, settings)) {
    output.Write(Description(backup) + "\n");
    Write_Places(output, backup.Content.Changed, "  had changed since the check");
  }
  return Exit_Done;
} catch (const std::exception&) {
  return Report_Failure("Could not read the backups!");
}

int Restore_Backup(Console_Window& window, Output& output, const Backup_Settings& settings) try {
  std::vector<Listed_Backup> backups = Backups_Of(window, settings);
  std::erase_if(backups, [](const Listed_Backup& backup) {
    return backup.Content.Kind != Backup::State::Finished;
  });
  if (backups.empty()) throw Wrong_Usage{"There is no such backup.\n"};
  const Listed_Backup& newest = backups.back();
  Write_Error("Restore: " + Description(newest));
  if (!Is_Confirmed(settings.Yes)) return Exit_Failure;
  const Restore_Result result = window.Form().Restore(newest.Content.Route, newest.Content.Time);
  window.Report();
  if (result.How != Restore_Result::End::Done) return Report_Failed_Restore(result.How);
  window.Outcome = "the restore was finished";
  Report_Restored(output, newest, result.Files);
  return Exit_Done;
} catch (const std::exception&) {
  return Report_Failure("Could not read the backups!");
}

}  // namespace rivelt
