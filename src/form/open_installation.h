// The installation that the program is at work on: its files, its routes, and what becomes of
// updates that were interrupted.

#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "backup/backups.h"
#include "system/file_service.h"
#include "text/keyed_collection.h"
#include "text/text.h"

namespace rivelt {

// The form fills it in when it starts. What lists or restores backups asks this object and not the
// form; both work under its one lock.
class Open_Installation {
 public:
  std::unique_ptr<File_System_Object> Files;  // null: the form could not be loaded
  Text Root;  // folder path to which "\routes" and the like are appended directly
  Keyed_Collection<Text> Route_Folders;  // display name -> folder name

  bool Stopped = false;      // Fatal_Error was called; nothing leads out of this state
  bool Whole_Route = false;  // a check converts all that uses the route's own numbers

  // The files that the last Update has replaced though they were no longer what the check had read.
  std::vector<Text> Changed_Since_Check;

  // The lines about updates that had not finished, and what takes each of them as it comes, once
  // the start has reported its own.
  std::vector<Text> Recovery_Lines;
  std::function<void(Text_View line)> Report;

  // What is staged is older than a restored route, and must not be moved over it.
  bool Restored_Since_Check = false;

  // Keeps other programs from the staging folder and the routes until this object goes. Failure:
  // one is at work there.
  void Lock();
  bool Is_Locked() const { return Held_Lock && Held_Lock->In_Force(); }

  // Completes or rolls back the updates that had not finished, each route on its own: what cannot
  // be done is reported. Holds the lock while it works; while another program has it, nothing is
  // done or reported.
  void Recover_At_Start();

  // The same for one route, under the lock. Failure: it cannot be done.
  void Recover_Route(const Text& route_folder);

  // For a program that ends after a failed Update: rolls it back if this one holds the lock.
  void Recover_Before_End(const Text& route_folder);

  // Makes the route what it was before the update of that time.
  Restore_Result Restore(const Text& route_folder, const Text& time);

 private:
  void Recover_Or_Report(const Text& route_folder);
  void Report_Recovery(Text_View line, Text_View what);

  std::unique_ptr<Folder_Lock> Held_Lock;
};

}  // namespace rivelt
