#include <iostream>
#include <string>

#include "platform/machine.h"
#include "programs/cli/choose_entry.h"
#include "programs/cli/commands.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

// A row of the transform table.
struct Row {
  Text Old_Name;
  Text New_Name;
};

Text Shape_To_Pick(const Sorted_List& shapes, Text_View wanted) {
  if (const auto entry = Choose_Entry(shapes, wanted)) return *entry;
  throw Wrong_Usage{"The catalogue has no single shape \"" + To_Utf8(wanted) +
                    "\". The closest are:\n" + Closest_Entries(shapes, wanted)};
}

std::vector<Row> Rows_Of(const Route_Settings& settings, const Sorted_List& shapes) {
  std::vector<Row> rows;
  for (const std::string& replacement : settings.Replacements) {
    const std::size_t equals = replacement.find('=');
    if (equals == std::string::npos || equals == 0) {
      throw Wrong_Usage{"\"" + replacement + "\" is not of the form OLD=NEW.\n"};
    }
    const Text new_name = From_Utf8(replacement.substr(equals + 1));
    rows.push_back({From_Utf8(replacement.substr(0, equals)), Shape_To_Pick(shapes, new_name)});
  }
  for (const std::string& deletion : settings.Deletions) {
    if (deletion.empty()) throw Wrong_Usage{"A deletion needs the name of a shape.\n"};
    rows.push_back({From_Utf8(deletion), Text(Delete_Entry)});
  }
  if (rows.size() > Row_Count) throw Wrong_Usage{"No more than five shapes at a time.\n"};
  return rows;
}

void Set_Up(Console_Window& window, const Route_Settings& settings) {
  window.Pick(Control::cmbRoutes, Route_To_Pick(window.List(Control::cmbRoutes), settings.Route));
  const std::vector<Row> rows = Rows_Of(settings, window.List(cmbTracks(0)));
  if (settings.Whole_Route) window.Toggle_Whole_Route();
  if (!settings.All_Sections && rows.empty()) return;
  window.Select(Control::optDynamic_1);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    window.Type(txtTrack(static_cast<int>(i)), rows[i].Old_Name);
    window.Pick(cmbTracks(static_cast<int>(i)), rows[i].New_Name);
  }
}

void Save_Log(Console_Window& window, const std::string& file) {
  window.Save_File_Names.push_back(From_Utf8(file));
  if (!window.Press(Control::cmdSave)) Write_Error("The log of a stopped program cannot be saved.");
}

}  // namespace

Text Route_To_Pick(const Sorted_List& routes, const std::string& wanted) {
  if (const auto entry = Choose_Entry(routes, From_Utf8(wanted))) return *entry;
  throw Wrong_Usage{"There is no single route \"" + wanted + "\". The routes are:\n" +
                    All_Entries(routes)};
}

int Answer_From_Terminal() {
  if (!Input_Is_Terminal()) return 0;
  std::cerr << "Type ok to go on, anything else cancels: " << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  if (End_Requested()) throw Interrupted();
  return answer == "ok" || answer == "OK" ? Answer_Ok : 0;
}

int Report_Stopped(const Console_Window& window) {
  Write_Error(window.Log());
  return Exit_Failure;
}

int List_Routes(Console_Window& window, Output& output) {
  if (window.Is_Stopped()) return Report_Stopped(window);
  const Sorted_List& routes = window.List(Control::cmbRoutes);
  for (std::size_t row = 0; row < routes.Count(); ++row) {
    const Text& route = routes.Entry(row);
    output.Write(route + u"\t" + window.Form().Folders().Look_Up(route) + u"\n");
  }
  return Exit_Done;
}

int Run_Command(Console_Window& window, Control button, const Route_Settings& settings) {
  if (window.Is_Stopped()) return Exit_Failure;
  Set_Up(window, settings);
  window.Ask = settings.Yes ? [] { return Answer_Ok; } : Answer_From_Terminal;
  const bool is_update = button == Control::cmdUpdate;
  // Of an update before the question, while the files are what they were.
  if (is_update) Warn_Of_What_Stays_Behind(window);
  if (!window.Press(button)) throw Wrong_Usage{"A route without a name cannot be picked.\n"};
  window.Clear_Status();
  if (!is_update && !window.Is_Stopped()) Warn_Of_What_Stays_Behind(window);
  if (is_update && window.Failed()) {
    const Text route = window.Read_Text(Control::cmbRoutes);
    window.Form().Recover_Before_End(window.Form().Folders().Look_Up(route));
  }
  if (settings.Log_File) Save_Log(window, *settings.Log_File);
  return window.Failed() ? Exit_Failure : Exit_Done;
}

}  // namespace rivelt
