#include "programs/sample/route.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "programs/sample/dynamic_track.h"
#include "programs/sample/file_writing.h"
#include "programs/sample/global_catalogue.h"
#include "programs/sample/text_lines.h"
#include "programs/sample/world_file.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt::sample {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 8> Beginnings = {"Hest", "Kell", "Mor",  "Osk",
                                                        "Rav",  "Thol", "Vind", "Wend"};
constexpr std::array<std::string_view, 8> Endings = {"beck",  "combe",  "ford", "gate",
                                                     "marsh", "quarry", "wick", "wold"};

Route Named_Route(std::size_t number) {
  switch (number) {
    case 0:
      return {u"Ambrewick", "AMBREWICK", "World", "tsection.dat"};
    case 1:
      return {u"\"Brenn Valley Line\"", "Brenn_Valley", "WORLD", "Tsection.dat"};
    case 2:
      return {u"D\u00F6rnquell", "Doernquell", "world", ""};
    default:
      break;
  }
  const std::size_t index = number - 3;
  std::string name(Beginnings[index % Beginnings.size()]);
  name += Endings[index / Beginnings.size() % Endings.size()];
  const std::size_t round = index / (Beginnings.size() * Endings.size());
  if (round > 0) name += std::to_string(round + 1);
  return {From_Utf8(name), name, "World", "TSECTION.DAT"};
}

Text Trk_Text(const Route& route) {
  Text_Lines lines(u"r1t");
  lines.Line(0, {u"Tr_RouteFile ("});
  lines.Line(1, {u"RouteID ( \"", From_Utf8(route.Folder), u"\" )"});
  lines.Line(1, {u"Name ( ", route.Name, u" )"});
  lines.Line(1, {u"Description ( \"An invented line. \"+"});
  lines.Line(2, {u"\"Nothing of it exists.\" )"});
  lines.Line(1, {u"RouteStart ( -5354 14850 12.5 -340 )"});
  lines.Line(1, {u"MilepostUnitsKilometers ( )"});
  lines.Line(0, {u")"});
  return lines.Whole();
}

Text Ws_Text() {
  Text_Lines lines(u"w1t");
  lines.Line(0, {u"Tr_Worldsoundfile ("});
  lines.Line(0, {u")"});
  return lines.Whole();
}

// The tile that a world file is named after: the tiles make up a square.
std::string Tile_Name(std::int64_t number, std::int64_t count) {
  std::int64_t width = 1;
  while (width * width < count) ++width;
  const auto signed_part = [](std::int64_t value) {
    const Text digits = Filled_Number(value < 0 ? -value : value, 6);
    return Concatenate({value < 0 ? u"-" : u"+", digits});
  };
  return To_Utf8(Concatenate(
      {u"w", signed_part(-5354 + number % width), signed_part(14850 + number / width)}));
}

// Real files are of very different sizes, most below the mean. The mean of the shares is 100.
std::int64_t Drawn_Objects(std::int64_t mean, Random_Source& random) {
  static constexpr std::array<std::int64_t, 10> shares = {10, 20,  40,  60,  70,
                                                          85, 100, 130, 185, 300};
  const std::int64_t share = shares[static_cast<std::size_t>(random.Below(10))];
  return std::max<std::int64_t>(1, mean * share * random.Between(80, 120) / 10000);
}

std::vector<Dynamic_Track> Tracks_Of(const Route& route, Long reserved, Random_Source random) {
  constexpr std::size_t count = 40;
  switch (route.Kind) {
    case Route::Local_File::Needs_Both_Deltas: {
      const Long section = reserved - static_cast<Long>(random.Between(500, 4000));
      const Long shape = reserved - static_cast<Long>(random.Between(500, 4000));
      return Invent_Dynamic_Tracks(count, section, shape, random);
    }
    case Route::Local_File::Needs_None:
      return Invent_Dynamic_Tracks(count, reserved, reserved, random);
    case Route::Local_File::Is_Missing:
      break;
  }
  return {};
}

// However many shapes are installed, a route uses a few hundred of them, those at the front of the
// catalogue among them.
std::vector<Shape> Shapes_In_Use(const std::vector<Shape>& shapes, Random_Source random) {
  constexpr std::size_t most = 400;
  if (shapes.size() <= most) return shapes;
  std::vector<Shape> used(shapes.begin(), shapes.begin() + 4);
  const auto count = static_cast<std::int64_t>(shapes.size());
  while (used.size() < most) used.push_back(shapes[static_cast<std::size_t>(random.Below(count))]);
  return used;
}

}  // namespace

Route Invent_Route(std::size_t number) {
  using enum Route::Local_File;
  static constexpr std::array kinds = {Needs_Both_Deltas, Needs_None, Is_Missing};
  Route route = Named_Route(number);
  route.Kind = kinds[number % kinds.size()];
  return route;
}

void Write_Route(const fs::path& routes_folder, const Route& route,
                 const std::vector<Shape>& shapes, World_Size size, bool has_binary_file,
                 Random_Source random) {
  const fs::path folder = routes_folder / route.Folder;
  const fs::path world = folder / route.World_Folder;
  fs::create_directories(world);
  Write_Text_File(folder / (route.Folder + ".trk"), Trk_Text(route));
  const auto tracks = Tracks_Of(route, Reserved_Count(shapes), random.Part(0));
  if (!tracks.empty()) Write_Text_File(folder / route.Local_File_Name, Local_Catalogue(tracks));
  const std::vector<Shape> used = Shapes_In_Use(shapes, random.Part(1));
  for (std::int64_t i = 0; i < size.Files; ++i) {
    Random_Source file_random = random.Part(static_cast<std::uint64_t>(i) + 2);
    const std::string tile = Tile_Name(i, size.Files);
    if (has_binary_file && i > 0 && i == size.Files - 1) {
      Write_Bytes(world / (tile + ".w"), Binary_World(file_random));
      continue;
    }
    const std::int64_t drawn = Drawn_Objects(size.Objects, file_random);
    const std::int64_t objects = i == 0 ? std::max<std::int64_t>({drawn, size.Objects, 4}) : drawn;
    Write_Text_File(world / (tile + (i % 7 == 5 ? ".W" : ".w")),
                    World_Text(used, tracks, objects, i == 0, file_random));
    if (i % 10 == 0) Write_Text_File(world / (tile + ".ws"), Ws_Text());
  }
}

}  // namespace rivelt::sample
