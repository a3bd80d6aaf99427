#include <string>
#include <vector>

#include "programs/cli/commands.h"
#include "text/utf8.h"

namespace rivelt {

int Convert_To_Text(Console_Window& window, Output& output, const std::string& route) {
  const Text route_folder = Route_To_Pick(window, route).Folder;
  const Binary_Files binary = window.Form().Binary_Files_Of(route_folder);
  if (binary.Places.empty()) {
    output.Write("No binary files\n");
    return Exit_Done;
  }
  constexpr std::uint64_t megabyte = 1'000'000;
  Write_Error("Files to convert to text: " + std::to_string(binary.Places.size()) +
              ", which will need about " + std::to_string(binary.Text_Bytes / megabyte + 1) +
              " MB");
  if (!Is_Confirmed(window)) return Exit_Failure;
  std::vector<Text> converted;
  const Change_End end = window.Form().Convert_To_Text(route_folder, converted);
  window.Report();
  if (end != Change_End::Done) {
    Write_Error("Had problems converting this route's files! " + What_Became_Of_It(end));
    return Exit_Failure;
  }
  window.Update_Finished = true;
  for (const Text& place : converted) output.Write("Converted\t" + To_Utf8(place) + "\n");
  return Exit_Done;
}

}  // namespace rivelt
