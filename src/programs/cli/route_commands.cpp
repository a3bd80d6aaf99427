#include <algorithm>
#include <cctype>
#include <iostream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "platform/machine.h"
#include "programs/cli/choose_entry.h"
#include "programs/cli/commands.h"
#include "text/letter_case.h"
#include "text/primitives.h"
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

std::vector<Row> Set_Up(Console_Window& window, const Route_Settings& settings) {
  window.Pick(Control::cmbRoutes, Route_To_Pick(window, settings.Route).Name);
  std::vector<Row> rows = Rows_Of(settings, window.List(cmbTracks(0)));
  if (settings.Whole_Route) window.Toggle_Whole_Route();
  if (settings.All_Sections || !rows.empty()) window.Select(Control::optDynamic_1);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    window.Type(txtTrack(static_cast<int>(i)), rows[i].Old_Name);
    window.Pick(cmbTracks(static_cast<int>(i)), rows[i].New_Name);
  }
  return rows;
}

std::vector<Installed_Route> Sorted_Routes(const Console_Window& window) {
  std::vector<Installed_Route> routes = window.Form().Routes();
  std::ranges::stable_sort(routes, {},
                           [](const Installed_Route& route) { return Key_Of(route.Name); });
  return routes;
}

std::string Lines_Of(const std::vector<Installed_Route>& routes) {
  std::string lines;
  for (const auto& [name, folder] : routes) lines += To_Utf8(name) + "\t" + To_Utf8(folder) + "\n";
  return lines;
}

void Press(Console_Window& window, Control button) {
  if (!window.Press(button)) throw Wrong_Usage{"A route without a name cannot be picked.\n"};
  window.Report();
}

// Says which of the old shapes no track object has. False: there are some.
bool All_Found(const Console_Window& window, const std::vector<Row>& rows) {
  const std::set<Text>& found = window.Form().Findings().Transformed_Shapes;
  bool all_found = true;
  for (const Row& row : rows) {
    const Text_View name = Trim_Text(row.Old_Name);
    const Text folded = Fold_Case(name);
    if (found.contains(folded) || found.contains(folded + u".s")) continue;
    Write_Error(Concatenate({u"No track object has ", name}));
    all_found = false;
  }
  return all_found;
}

std::string Quoted(Text_View text) {
  return "\"" + To_Utf8(text) + "\"";
}

// The newest backup of the picked route and the command that undoes its update.
std::string Way_Back(const Console_Window& window) {
  const std::vector<Text> times = window.Restorable();
  if (times.empty()) return "";
  const std::string root =
      window.Named_Root ? "--root \"" + *window.Named_Root + "\" " : std::string();
  return "; backup " + To_Utf8(times.front()) + "; to go back: rivelt-cli " + root + "restore " +
         Quoted(window.Read_Text(Control::cmbRoutes)) + " --backup " + Quoted(times.front());
}

// Of the last check, and of an update if it has moved anything.
void Write_Summary(const Console_Window& window) {
  if (window.Is_Stopped()) return;
  const Check_Findings& found = window.Form().Findings();
  const auto count = [](auto number) { return std::to_string(number); };
  std::string line = "Summary: " + count(found.World_Files.size()) + " world files, " +
                     count(found.Binary_Files) + " binary; " + count(found.To_Update) +
                     " to update";
  if (found.Objects_Checked) {
    line += "; " + count(found.Corrected) + " numbers corrected; " + count(found.Unknown_Objects) +
            " track objects of " + count(found.Unknown_Shapes.size()) +
            " shapes that the catalogue does not have; " + count(found.Left) + " left as they are";
  }
  Write_Error(window.Update_Finished ? line + Way_Back(window) : line);
}

// Presses Check; false if an old shape was not found.
bool Check_Picked_Route(Console_Window& window, const std::vector<Row>& rows) {
  Press(window, Control::cmdCheck);
  Write_Summary(window);
  return window.Is_Stopped() || All_Found(window, rows);
}

// Presses Update, which asks. False: the answer was no.
bool Update_Picked_Route(Console_Window& window) {
  bool confirmed = true;
  window.Ask = [&] {
    confirmed = Is_Confirmed(window);
    return confirmed ? Answer_Ok : 0;
  };
  Press(window, Control::cmdUpdate);
  if (window.Boxes().back().Style == Style_Critical) {
    const Text route = window.Read_Text(Control::cmbRoutes);
    const Change_End end = window.Form().Recover_Before_End(window.Form().Folders().Look_Up(route));
    if (!window.Is_Stopped()) Write_Error(What_Became_Of_It(end));
    window.Update_Finished = end == Change_End::Done;
    if (window.Update_Finished) window.Forget_Failure();
  }
  if (confirmed) Write_Summary(window);
  return confirmed;
}

// The exit status of a command that has ended.
int End(Console_Window& window, const Route_Settings& settings, bool done) {
  if (settings.Log_File) {
    window.Save_File_Names.push_back(From_Utf8(*settings.Log_File));
    if (window.Press(Control::cmdSave)) {
      window.Report();
    } else {
      Write_Error("The log of a stopped program cannot be saved.");
    }
  }
  return done && !window.Failed() ? Exit_Done : Exit_Failure;
}

}  // namespace

Installed_Route Route_To_Pick(const Console_Window& window, const std::string& wanted) {
  const std::vector<Installed_Route> routes = Sorted_Routes(window);
  const auto with = [&](Text Installed_Route::*field, Text_View value) {
    std::vector<Installed_Route> found;
    std::ranges::copy_if(routes, std::back_inserter(found), [&](const Installed_Route& route) {
      return Fold_Case(route.*field) == Fold_Case(value);
    });
    return found;
  };
  auto meant = with(&Installed_Route::Name, From_Utf8(wanted));
  if (meant.empty()) meant = with(&Installed_Route::Folder, From_Utf8(wanted));
  if (meant.size() == 1) meant = with(&Installed_Route::Name, meant.front().Name);
  if (meant.size() == 1) return meant.front();
  if (meant.empty()) {
    throw Wrong_Usage{"There is no route \"" + wanted + "\". The routes are:\n" + Lines_Of(routes)};
  }
  throw Wrong_Usage{"Several routes have one name, so none of them can be picked:\n" +
                    Lines_Of(meant)};
}

bool Is_Confirmed(const Console_Window& window) {
  if (window.Yes) return true;
  std::cerr << "Type ok to go on, anything else cancels: " << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  if (End_Requested()) throw Interrupted();
  for (char& letter : answer) letter = static_cast<char>(std::tolower(letter));
  if (answer == "y" || answer == "yes" || answer == "ok") return true;
  Write_Error("Cancelled; the route is untouched.");
  return false;
}

int List_Routes(const Console_Window& window, Output& output) {
  output.Write(Lines_Of(Sorted_Routes(window)));
  return Exit_Done;
}

int Check_Route(Console_Window& window, const Route_Settings& settings) {
  Check_Picked_Route(window, Set_Up(window, settings));
  return End(window, settings, true);
}

int Update_Route(Console_Window& window, const Route_Settings& settings) {
  const std::vector<Row> rows = Set_Up(window, settings);
  if (!window.Yes || !rows.empty()) {
    const bool goes_on = Check_Picked_Route(window, rows) || !window.Yes;
    const bool is_needed = !window.Is_Stopped() && window.Form().Findings().To_Update != 0;
    if (!goes_on || !is_needed) return End(window, settings, goes_on);
  }
  return End(window, settings, Update_Picked_Route(window));
}

}  // namespace rivelt
