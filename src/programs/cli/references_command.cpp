#include <algorithm>
#include <iterator>
#include <numeric>
#include <string>
#include <utility>

#include "convert/count_references.h"
#include "programs/cli/commands.h"
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

constexpr std::size_t Most_Shown = 3;

std::string Description(std::string_view kind, const Reference_Count& count) {
  const Long total = std::accumulate(count.Numbers.begin(), count.Numbers.end(), 0);
  std::string lines = std::string(kind) + "\t" + std::to_string(total) + " references\t" +
                      std::to_string(count.Of(Leads::To_Catalogue)) + " to the catalogue\t" +
                      std::to_string(count.Of(Leads::To_Own)) + " to the route's own\t" +
                      std::to_string(count.Of(Leads::To_Nowhere)) + " to nowhere\n";
  for (std::size_t i = 0; i < std::min(count.Lost.size(), Most_Shown); ++i) {
    lines += "  to nowhere\t" + To_Utf8(count.Lost[i].File) + "\t" +
             To_Utf8(Trim_Text(Number_Text(count.Lost[i].Number))) + "\n";
  }
  return lines;
}

}  // namespace

int Count_References(Console_Window& window, Output& output, const std::string& wanted) try {
  const Route_References found = window.Form().References_Of(Route_To_Pick(window, wanted).Folder);
  for (const Text& file : found.Binary_Files) {
    Write_Error("Binary, and passed over: " + To_Utf8(file));
  }
  if (!found.Has_Database) Write_Error("No track database!");
  bool any_lost = !found.Has_Database;
  for (const auto& [kind, name] : Named_Kinds) {
    const Reference_Count& count = found.Counter.Of(kind);
    output.Write(Description(name, count));
    any_lost = any_lost || !count.Lost.empty();
  }
  return any_lost ? Exit_Failure : Exit_Done;
} catch (const Failure& failure) {
  Write_Error("Could not read a file of the route: " + To_Utf8(failure.Reason()));
  return Exit_Failure;
}

}  // namespace rivelt
