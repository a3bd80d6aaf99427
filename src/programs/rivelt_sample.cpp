// rivelt-sample: writes an invented installation to try the other programs on.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

#include "programs/sample/installation.h"

namespace {

void Add_Options(CLI::App& app, std::string& folder, rivelt::sample::Installation_Plan& plan) {
  app.add_option("DIR", folder, "Folder to write into; it must be empty or not exist yet")
      ->required();
  app.add_option("--routes", plan.Routes, "Number of routes")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  app.add_option("--world-files", plan.World_Files, "World files of each route")
      ->check(CLI::Range(1, 1000000))
      ->capture_default_str();
  app.add_option("--objects", plan.Objects, "Mean number of track objects of a world file")
      ->check(CLI::Range(1, 100000))
      ->capture_default_str();
  app.add_option("--shapes", plan.Shapes, "Track shapes in the global catalogue")
      ->check(CLI::Range(10, 1000000))
      ->capture_default_str();
  app.add_option("--seed", plan.Seed, "The same seed gives the same files")->capture_default_str();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Writes an invented installation: a global catalogue, routes and world files.",
               "rivelt-sample");
  std::string folder;
  rivelt::sample::Installation_Plan plan;
  Add_Options(app, folder, plan);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  }
  try {
    rivelt::sample::Write_Installation(folder, plan);
  } catch (const std::exception& error) {
    std::cerr << "rivelt-sample: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
