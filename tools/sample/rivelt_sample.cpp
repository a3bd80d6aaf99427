// rivelt-sample: writes an invented installation to try the other programs on. The same plan gives
// the same bytes everywhere.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "sample/binary_file.h"
#include "sample/text_file.h"
#include "sample/track.h"
#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt::sample {
namespace {

namespace fs = std::filesystem;

struct Installation_Plan {
  std::int64_t Routes = 5;
  std::int64_t World_Files = 12;  // of each route
  std::int64_t Objects = 40;      // the mean number of track objects in a world file
  Long Shapes = 300;
  std::uint64_t Seed = 1;
};

struct Route {
  Text Name;           // as the .trk file has it, with its quotes if it has any
  std::string Folder;  // the names of folders and files have their letter case from the wild
  std::string World_Folder;
  std::string Local_File;  // empty if the route has none
  std::string Database;
};

// The one route whose files are binary, compressed and texts by turns.
constexpr std::size_t Binary_Route = 4;

// The first route is also the first by name.
Route Named_Route(std::size_t number) {
  static const std::array<Route, 3> first = {
      {{u"Ambrewick", "AMBREWICK", "World", "tsection.dat", "AMBREWICK"},
       {u"\"Brenn Valley Line\"", "Brenn_Valley", "WORLD", "Tsection.dat", "Old Line"},
       {u"D\u00F6rnquell", "Doernquell", "world", "", "Doernquell"}}};
  static constexpr std::array names = {"Hestbeck", "Kellcombe", "Morford", "Oskgate"};
  if (number < first.size()) return first[number];
  const std::size_t index = number - first.size();
  const std::size_t round = index / names.size();
  const std::string name = names[index % names.size()] + (round ? std::to_string(round + 1) : "");
  return {From_Utf8(name), name, "World", number % 3 == 2 ? "" : "TSECTION.DAT", name};
}

Text Trk_Text(const Route& route) {
  const Text_View quote = route.Database.find(' ') == std::string::npos ? u"" : u"\"";
  return File_Text(
      u"r1t",
      Joined(u" Tr_RouteFile ( RouteID ( \"", From_Utf8(route.Folder), u"\" ) Name ( ", route.Name,
             u" ) Description ( \"An invented line. \"+\r\n\t\t\"Nothing of it exists.\" )"
             u" FileName ( ",
             quote, From_Utf8(route.Database), quote,
             u" ) RouteStart ( -5354 14850 12.5 -340 ) MilepostUnitsKilometers ( ) )"));
}

// However many shapes are installed, a route uses a few hundred of them, those at the front of the
// catalogue among them.
std::vector<Shape> Shapes_In_Use(const std::vector<Shape>& shapes, Random_Source random) {
  constexpr std::size_t most = 400;
  if (shapes.size() <= most) return shapes;
  std::vector<Shape> used(shapes.begin(), shapes.begin() + 7);
  while (used.size() < most) used.push_back(random.One_Of(shapes));
  return used;
}

// By turns of three routes: their own numbers need moving, need none, and there are none.
std::vector<Dynamic_Track> Own_Track(std::size_t number, Long reserved, Random_Source random) {
  constexpr std::size_t count = 40;
  if (number % 3 == 2) return {};
  if (number % 3 == 1 && number != Binary_Route)
    return Invent_Dynamic_Tracks(count, reserved, reserved, random);
  const Long section = reserved - static_cast<Long>(random.Between(500, 4000));
  const Long shape = reserved - static_cast<Long>(random.Between(500, 4000));
  return Invent_Dynamic_Tracks(count, section, shape, random);
}

// Real files are of very different sizes, many all but empty and a few very large. The mean of all
// shares is 100.
std::int64_t Drawn_Objects(std::int64_t mean, Random_Source& random) {
  static constexpr std::array shares = {0, 5, 15, 30, 45, 65, 90, 130, 170, 250};
  const std::int64_t share = random.One_In(100) ? 2000 : random.One_Of(shares);
  return std::max<std::int64_t>(1, mean * share * random.Between(80, 120) / 10000);
}

// A file in the form that the program cannot read.
std::string Binary_World(Random_Source random) {
  std::string bytes = "SIMISA@@@@@@@@@@JINX0w0b______\r\n";
  for (int i = 0; i < 4000; ++i) bytes += static_cast<char>(random.Below(256));
  return bytes;
}

// Of a world file, without the ending.
std::string Tile_Name(std::int64_t x, std::int64_t z) {
  std::array<char, 32> name;
  std::snprintf(name.data(), name.size(), "w%+07d%+07d", static_cast<int>(x), static_cast<int>(z));
  return name.data();
}

// A new file, or an exception that names it.
void Write_Bytes(const fs::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

void Write_Text_File(const fs::path& path, Text_View text) {
  Write_Bytes(path, To_Utf16(text));
}

// Of the files of a route, the one of that number.
void Write_Track_File(const fs::path& path, Text_View text, std::size_t route, std::int64_t file) {
  if (route != Binary_Route || file % 3 == 2) return Write_Text_File(path, text);
  const std::string binary = Binary_File(text);
  Write_Bytes(path, file % 3 == 0 ? Compressed_File(binary) : binary);
}

void Write_Route(const Installation_Plan& plan, std::size_t number,
                 const std::vector<Shape>& shapes, const fs::path& routes) {
  const Route route = Named_Route(number);
  const fs::path folder = routes / route.Folder;
  const Random_Source random = Random_Source(plan.Seed).Part(number + 1);
  const Route_Track track{From_Utf8(route.Folder), Shapes_In_Use(shapes, random.Part(1)),
                          Own_Track(number, Reserved_Count(shapes), random.Part(0))};
  fs::create_directories(folder / route.World_Folder);
  Write_Text_File(folder / (route.Folder + ".trk"), Trk_Text(route));
  if (!track.Own.empty()) Write_Text_File(folder / route.Local_File, Local_Catalogue(track.Own));
  Track_Database tracks;
  Track_Database roads;
  const auto width = static_cast<std::int64_t>(std::ceil(std::sqrt(plan.World_Files)));
  for (std::int64_t i = 0; i < plan.World_Files; ++i) {
    const std::int64_t x = -5354 + i % width;
    const std::int64_t z = 14850 + i / width;
    const std::string path = (folder / route.World_Folder / Tile_Name(x, z)).string();
    Random_Source of_file = random.Part(static_cast<std::uint64_t>(i) + 2);
    if (i % 10 == 0) Write_Text_File(path + ".ws", File_Text(u"w1t", u" Tr_Worldsoundfile ( )"));
    if (number == 0 && i > 0 && i == plan.World_Files - 1) {
      Write_Bytes(path + ".w", Binary_World(of_file));
      continue;
    }
    std::int64_t objects = Drawn_Objects(plan.Objects, of_file);
    // The first world file has an object of every kind.
    if (i == 0) objects = std::max<std::int64_t>({objects, plan.Objects, 7});
    const World world = Invent_World(track, objects, i == 0, of_file);
    Write_Track_File(path + (i % 7 == 5 ? ".W" : ".w"), world.File, number, i);
    tracks.Add_Tile(x, z, world.Track);
    roads.Add_Tile(x, z, {world.Track.front()});
  }
  Write_Track_File(folder / (route.Database + ".tdb"), tracks.File(), number, 0);
  Write_Track_File(folder / (route.Database + ".rdb"), roads.File(), number, 1);
}

void Write_Installation(const fs::path& folder, const Installation_Plan& plan) {
  if (fs::exists(folder) && !fs::is_empty(folder)) {
    throw std::runtime_error("will not write into " + folder.string() + ", which is not empty");
  }
  fs::create_directories(folder / "Global");
  const std::vector<Shape> shapes = Invent_Shapes(plan.Shapes);
  Write_Text_File(folder / "Global" / "tsection.dat",
                  Global_Catalogue(shapes, Random_Source(plan.Seed).Part(0)));
  for (std::int64_t i = 0; i < plan.Routes; ++i) {
    Write_Route(plan, static_cast<std::size_t>(i), shapes, folder / "Routes");
  }
}

}  // namespace
}  // namespace rivelt::sample

int main(int argc, char** argv) {
  using rivelt::Long;
  CLI::App app("Writes an invented installation: a global catalogue and routes.", "rivelt-sample");
  std::string folder;
  rivelt::sample::Installation_Plan plan;
  const auto add = [&](const char* name, auto& number, Long first, Long last, const char* help) {
    app.add_option(name, number, help)->check(CLI::Range(first, last))->capture_default_str();
  };
  app.add_option("DIR", folder, "Folder to write into; it must be empty or not exist yet")
      ->required();
  add("--routes", plan.Routes, 1, 1000, "Number of routes");
  add("--world-files", plan.World_Files, 1, 1000000, "World files of each route");
  add("--objects", plan.Objects, 1, 100000, "Mean number of track objects of a world file");
  add("--shapes", plan.Shapes, 10, 1000000, "Track shapes in the global catalogue");
  app.add_option("--seed", plan.Seed, "The same seed gives the same files")->capture_default_str();
  try {
    app.parse(argc, argv);
    rivelt::sample::Write_Installation(folder, plan);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  } catch (const std::exception& error) {
    std::cerr << "rivelt-sample: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
