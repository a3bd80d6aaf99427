// The state of the program and its procedures. One instance lives per process.
//
// Each procedure is in a file of this room, named after its topic. A working procedure handles
// every failure of its own steps with one fixed report and returns normally.

#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "backup/recovery.h"
#include "backup/restore.h"
#include "backup/update.h"
#include "catalogue/catalogue.h"
#include "convert/whole_route.h"
#include "form/check_findings.h"
#include "form/reference_report.h"
#include "system/file_service.h"
#include "system/registry_service.h"
#include "text/keyed_collection.h"
#include "text/text.h"
#include "window/menu.h"
#include "window/window.h"

namespace rivelt {

// Makes the object through which all files are reached. Failure: it cannot be made.
using Create_File_System_Object = std::function<std::unique_ptr<File_System_Object>()>;

// As the start has found it.
struct Installed_Route {
  Text Name;  // for display
  Text Folder;
};

// What became of a route that was to be changed as a whole.
enum class Change_End {
  Done,
  Lock_Held,        // another program is at work; nothing was touched
  Nothing_Touched,  // it could not be begun
  Rolled_Back,      // it failed part-way, and the route is what it was
  Unfinished,       // it failed part-way; the next start takes it back
};

struct Restore_Result {
  Change_End How = Change_End::Done;
  Restored Files;
};

// Compressed and binary files of a route.
struct Binary_Files {
  std::vector<Text> Places;      // below the route's folder
  std::uint64_t Text_Bytes = 0;  // about what they need as texts
};

class frmMain {
 public:
  // The window and the registry must outlive the form.
  frmMain(Window& window, Registry& registry, Create_File_System_Object create_object)
      : Form_Window(window), System_Registry(registry), Create_Object(std::move(create_object)) {}

  // Finds the installation, lists its routes and reads its catalogue. Called once. Whatever goes
  // wrong ends as a text in the log, with the window stopped.
  void Form_Init();

  // The events of the controls, raised by an Event_Gate.
  void cmbRoutes_Click();
  void optDynamic_Click(int index);
  void txtTrack_Change(int index);
  void cmbTracks_Click(int index);
  void cmdCheck_Click();
  void cmdUpdate_Click();
  void cmdSave_Click();
  void cmdQuit_Click();

  // The menu, but for what Open_Installation does: the start of another form. Restorable gives the
  // times of the picked route's newest backups, newest first; backup is one of them.
  bool Can_Choose(Menu_Entry entry) const;
  bool Is_Whole_Route() const { return Whole_Route; }
  std::vector<Text> Restorable() const;
  void Choose(Menu_Entry entry, const Text& backup);

  // What the console program asks for beyond the controls, after a start that was not stopped.
  File_System_Object& Files() const { return *FSO; }
  const Text& Root() const { return MSTS_Path; }
  const Keyed_Collection<Text>& Folders() const { return Route_Folders; }

  // All of them, also those of a name that another has before them in Folders.
  const std::vector<Installed_Route>& Routes() const { return Installed_Routes; }

  // Why the last command or the start failed, in words for a person; empty if it did not.
  const Text& Reason() const { return Last_Reason; }

  // About updates that had not finished: all lines since the start.
  const std::vector<Text>& Recovery() const { return Recovery_Lines; }

  // Of the last full check, also if what it staged has been moved since.
  const Check_Findings& Findings() const { return Found; }

  // Where the numbers of the route lead. Failure: a file of it cannot be read, or is not of its
  // form.
  Route_References References_Of(const Text& route_folder);

  // Makes the route what it was before the update of that time. The next check is a full one.
  Restore_Result Restore(const Text& route_folder, const Text& time);

  // The route's compressed and binary world files and databases, and the update that makes texts of
  // them. The next check is a full one. converted gets their places.
  Binary_Files Binary_Files_Of(const Text& route_folder);
  Change_End Convert_To_Text(const Text& route_folder, std::vector<Text>& converted);

  // For a program that ends after a failed Update: takes it back if this one holds the lock.
  Change_End Recover_Before_End(const Text& route_folder);

 private:
  // Start-up. False: Fatal_Error has been called.
  bool Find_MSTS();
  bool Read_Routes();
  bool Read_Global();
  void Read_Route(const Folder& folder);

  // Keeps other programs from the staging folder and the routes until the form goes. Failure: one
  // is at work there.
  void Lock();
  bool Is_Locked() const { return Held_Lock && Held_Lock->In_Force(); }

  // Updates that have not finished. Recover raises a Failure; Recover_Or_Report shows a line in its
  // place, and Recover_All does for each route but the given one.
  void Recover_At_Start();
  void Recover_All(const Text& route_folder);
  Outcome Recover(const Text& route_folder);
  std::optional<Outcome> Recover_Or_Report(const Text& route_folder);  // nothing: it has failed

  // Shows a line about them, or keeps it until the start is reported.
  void Report_Recovery(Text_View line);

  // Changes a route by an update of its own: takes the lock, recovers before, and after a failure.
  Change_End Change_Route(const Text& route_folder, const std::function<void()>& change);
  bool Works(const std::function<void()>& step);  // false: the reason of its failure is kept

  // The message log. The first two let pending events run.
  void Add_Text(Text_View text);
  void Add_Line(Text_View text);
  void Set_Log(Text_View text);

  // Replaces the log by the text and the standard line, and leaves only Quit and the log usable.
  void Fatal_Error(Text_View text);

  // Every handler of a command or of the start hands its failure over. One without a reason leaves
  // the reason as it is.
  void Keep_Reason(const std::exception& failure);

  // Ends a command that has failed: keeps the reason and shows the message in a box.
  void Report_Failure(const std::exception& failure, Text_View message);

  // What entries of the menu do.
  bool Is_Route_Picked() const;
  void Show_References();
  void Restore_From_Menu(const Text& time);
  void Convert_From_Menu();
  void Write_As_Text(const Text& route_folder, const Text& place, const Text& path);

  // The shape registry. An unknown name is mapped to itself and has the id -1.
  void Add_Shape(Long id, Text_View name);
  Text Map_Shape(Text_View name);
  Long Shape_Id(Text_View name);

  // What a check works on: what the controls and the menu hold when it begins.
  struct Check_Settings {
    Text Route;
    bool Dynamic_Only = false;
    bool Whole_Route = false;
    std::array<Text, std::size_t{2} * Row_Count> Rows;  // old shape, new shape, row by row
    bool operator==(const Check_Settings&) const = default;
  };

  // The conversion of a route into the staging folder.
  void Do_Check();
  Check_Settings Read_Settings() const;
  void Rebuild_Transforms();
  void Prepare_Staging_Folder();
  void Do_Tsection();
  void Convert_Tsection(File& file);
  void Report_No_Tsection();
  void Do_World();
  void Convert_World_File(File& file);
  void Report_Findings();

  Purpose Purpose_Of_Check() const {
    return Current.Whole_Route ? Purpose::Convert : Purpose::Count;
  }
  bool Numbers_Move() const { return Section_Delta != 0 || Shape_Delta != 0; }
  void Do_Databases();
  void Convert_Database(File& file);
  void Count_In_Database(File& file);
  Renumbered_File Renumber_Database(File& file, bool& is_binary) const;

  // Reads a file that is no text, where a pass is to run over it. False: it is left as it is.
  bool Read_Binary_World(Text& text, const File_State& state);

  // The passes over the text of a world file; those in it give the number of changes.
  bool Run_World_Passes(Text& text);  // whether there is a change
  void Count_Objects_Behind(Text_View text);
  Long Rebase_Track_Objects(Text& text);
  Long Check_Shapes(Text& text);
  Renumbered_File Renumber_Track_Objects(Text_View text);

  // Paths below the installation root.
  const Text& Picked_Route_Folder() const;   // its name; Failure: no route is picked
  const Text& Current_Route_Folder() const;  // of the check's route
  void Make_Folder(const Text& path);

  // Writes a converted copy of the file that was read in that state.
  void Stage(Text_View name, Text_View text, const File_State& original);
  void Empty_Folder(const Text& path);

  // The steps of the commands after Do_Check.
  void Report_Staged_Files();
  void Move_Staged_Files();
  Collection<File> Staged_Databases() const;
  Replacement Replacement_By(Text_View name, Text_View place) const;
  void Report_Changed_Files();
  Updated_Route Updates_Of(const Text& route_folder) const {
    return {*FSO, MSTS_Path, route_folder};
  }

  Window& Form_Window;
  Registry& System_Registry;
  Create_File_System_Object Create_Object;

  std::unique_ptr<File_System_Object> FSO;
  Text MSTS_Path;  // folder path to which "\routes" and the like are appended directly
  Text NL;
  Check_Settings Last;                   // of the last check that went through both passes
  Check_Settings Current;                // of the check at work, or else the last one
  Keyed_Collection<Long> Shape_Ids;      // shape file name -> id
  Keyed_Collection<Text> Transforms;     // old shape file name -> new one, or " -delete-"
  bool Transforms_Changed = false;       // a row was edited since the last check
  Keyed_Collection<Text> Route_Folders;  // display name -> folder name
  Long Reserved_Sections = 0;            // counts that the global catalogue declares
  Long Reserved_Shapes = 0;
  Long Section_Delta = 0;  // offsets of the current route's local ids
  Long Shape_Delta = 0;

  Declared_Ids Declared;       // by the global catalogue
  Moving_Ids Moving_Sections;  // of the current route
  Moving_Ids Moving_Shapes;
  Check_Findings Found;

  bool Stopped = false;          // Fatal_Error was called; nothing leads out of this state
  bool Whole_Route = false;      // a check converts all that uses the route's own numbers
  bool Full_Check_Next = false;  // the route has been changed by other means than an Update

  std::vector<Installed_Route> Installed_Routes;
  Text Last_Reason;

  std::unique_ptr<Folder_Lock> Held_Lock;
  std::vector<Text> Recovery_Lines;
  bool Recovery_Shown = false;  // the start has reported its lines

  std::map<Text, File_State> Checked_Files;  // the originals of the staged files, as they were read
  std::set<Text> Changed_Since_Check;        // places of those that an Update found changed
};

}  // namespace rivelt
