#include <iterator>
#include <string>
#include <utility>

#include "convert/route_references.h"
#include "programs/cli/commands.h"
#include "system/places.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr std::pair<Reference_Kind, std::string_view> Named_Kinds[] = {
    {Reference_Kind::Track_Object, "Track objects"},
    {Reference_Kind::Dynamic_Section, "Sections of dynamic tracks"},
    {Reference_Kind::Dynamic_Shape, "Shapes of dynamic tracks"},
    {Reference_Kind::Path_Section, "Sections of track paths"},
    {Reference_Kind::Database_Section, "Sections in databases"},
    {Reference_Kind::Database_Shape, "Shapes in databases"},
    {Reference_Kind::Junction, "Junctions in databases"},
};
static_assert(std::size(Named_Kinds) == Reference_Kinds);

std::string Description(std::string_view kind, const Reference_Count& count) {
  std::string lines = std::string(kind) + "\t" + std::to_string(count.Total()) + " references\t" +
                      std::to_string(count.To_Catalogue) + " to the catalogue\t" +
                      std::to_string(count.To_Own) + " to the route's own\t" +
                      std::to_string(count.To_Nowhere) + " to nowhere\n";
  for (const Lost_Reference& lost : count.First_Lost) {
    lines += "  to nowhere\t" + To_Utf8(lost.File) + "\t" +
             To_Utf8(Trim_Text(Number_Text(lost.Number))) + "\n";
  }
  return lines;
}

Route_References References_Of(Console_Window& window, const Text& folder) {
  return {window.Form().Files(), window.Form().Root(), folder, [&window] { window.Yield(); }};
}

}  // namespace

void Warn_Of_What_Stays_Behind(Console_Window& window) try {
  if (window.Whole_Route()) return;
  const Text folder = window.Form().Folders().Look_Up(window.Read_Text(Control::cmbRoutes));
  const Text own_catalogue = places::Own_Catalogue(window.Form().Root(), folder);
  if (window.Form().Files().FindFile(own_catalogue)) {
    Write_Error(
        "This route has a catalogue of its own in OpenRails, which Open Rails reads in place of "
        "the global one.");
  }
  const Left_Behind left = References_Of(window, folder).Count_Left_Behind();
  if (left.In_Databases == 0 && left.In_Track_Objects == 0) return;
  Write_Error("Stays behind: " + std::to_string(left.In_Databases) +
              " of the route's own numbers in its track databases and " +
              std::to_string(left.In_Track_Objects) + " track objects; --whole-route moves them.");
} catch (const Unreadable_File& unreadable) {
  Write_Error("Cannot tell what stays behind, because of " + To_Utf8(unreadable.Name));
} catch (const Failure&) {
  // The command itself fails on it.
}

int Count_References(Console_Window& window, Output& output, const std::string& wanted) try {
  Route_References route = References_Of(window, Route_To_Pick(window, wanted).Folder);
  route.Count_World();
  route.Count_Paths();
  route.Count_Databases();
  for (const Text& file : route.Binary_Files()) {
    Write_Error("Binary, and passed over: " + To_Utf8(file));
  }
  bool any_lost = false;
  for (const auto& [kind, name] : Named_Kinds) {
    const Reference_Count& count = route.Of(kind);
    output.Write(Description(name, count));
    any_lost = any_lost || count.To_Nowhere != 0;
  }
  return any_lost ? Exit_Failure : Exit_Done;
} catch (const Unreadable_File& unreadable) {
  Write_Error("Could not read a file of the route: " + To_Utf8(unreadable.Name));
  return Exit_Failure;
}

}  // namespace rivelt
