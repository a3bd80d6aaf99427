#include <algorithm>
#include <string>
#include <vector>

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

Text Route_In_Folder(const Console_Window& window, const Text& folder) {
  const Sorted_List& routes = window.List(Control::cmbRoutes);
  for (std::size_t row = 0; row < routes.Count(); ++row) {
    const Text& route = routes.Entry(row);
    if (window.Form().Folder_Of_Route(route) == folder) return route;
  }
  return folder;
}

// Those that are meant, the oldest of each route first.
std::vector<Listed_Backup> Backups_Of(const Console_Window& window,
                                      const Backup_Settings& settings) {
  std::optional<Text> wanted;
  if (settings.Route) {
    wanted = window.Form().Folder_Of_Route(
        Route_To_Pick(window.List(Control::cmbRoutes), *settings.Route));
  }
  std::vector<Listed_Backup> listed;
  for (const Backup& backup : window.Form().Route_Backups().List()) {
    const Text route = Route_In_Folder(window, backup.Route_Folder);
    const bool is_meant = (!wanted || backup.Route_Folder == *wanted) &&
                          (!settings.Time || From_Utf8(*settings.Time) == backup.Time);
    if (is_meant) listed.push_back({route, backup});
  }
  return listed;
}

std::string Description(const Listed_Backup& backup) {
  return To_Utf8(backup.Route) + "\t" + To_Utf8(backup.Content.Time) + "\t" +
         std::to_string(backup.Content.Files) + " files\t" + std::to_string(backup.Content.Bytes) +
         " bytes";
}

bool Is_Confirmed(const Listed_Backup& backup, bool yes) {
  Write_Error("Restore: " + Description(backup));
  return yes || Answer_From_Terminal() == Answer_Ok;
}

int Report_Stopped(const Console_Window& window) {
  Write_Error(To_Utf8(window.Log()));
  return Exit_Failure;
}

int Report_Unreadable() {
  Write_Error("Could not read the backups!");
  return Exit_Failure;
}

}  // namespace

int List_Backups(Console_Window& window, Output& output, const Backup_Settings& settings) try {
  if (window.Is_Stopped()) return Report_Stopped(window);
  for (const Listed_Backup& backup : Backups_Of(window, settings)) {
    output.Write(std::string_view(Description(backup) + "\n"));
  }
  return Exit_Done;
} catch (const Failure&) {
  return Report_Unreadable();
}

int Restore_Backup(Console_Window& window, Output& output, const Backup_Settings& settings) try {
  if (window.Is_Stopped()) return Report_Stopped(window);
  const std::vector<Listed_Backup> backups = Backups_Of(window, settings);
  if (backups.empty()) throw Wrong_Usage{"There is no such backup.\n"};
  const Listed_Backup& newest = *std::ranges::max_element(
      backups, {}, [](const Listed_Backup& backup) { return backup.Content.Time; });
  if (!Is_Confirmed(newest, settings.Yes)) return Exit_Done;
  if (!window.Form().Restore_Backup(newest.Content)) {
    Write_Error(
        "Had problems restoring this route! What was replaced is taken back at the next start.");
    return Exit_Failure;
  }
  output.Write(std::string_view("Restored\t" + Description(newest) + "\n"));
  return Exit_Done;
} catch (const Failure&) {
  return Report_Unreadable();
}

}  // namespace rivelt
