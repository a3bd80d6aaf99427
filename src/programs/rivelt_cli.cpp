// The program without a screen: presses the same controls of the same form.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "platform/machine.h"
#include "programs/cli/commands.h"

namespace rivelt {
namespace {

struct Arguments {
  std::optional<std::string> Root;
  Route_Settings Settings;
  Backup_Settings Backup;
  std::string Script_File = "-";
};

void Describe_Whole_Route(CLI::App& command, Route_Settings& settings) {
  command.add_flag("--whole-route", settings.Whole_Route,
                   "Convert what uses the route's own numbers, too: databases and track objects");
}

void Describe_Settings(CLI::App& command, Route_Settings& settings) {
  command.add_option("ROUTE", settings.Route, "The route's name, as `routes` prints it")
      ->required();
  command.add_flag("--all", settings.All_Sections,
                   "Check all track sections, not dynamic track only");
  command
      .add_option("--replace", settings.Replacements,
                  "Replace the track shape OLD by NEW (with --delete up to five); implies --all")
      ->type_name("OLD=NEW")
      ->allow_extra_args(false);
  command
      .add_option("--delete", settings.Deletions,
                  "Remove the track objects of the shape OLD; implies --all")
      ->type_name("OLD")
      ->allow_extra_args(false);
  Describe_Whole_Route(command, settings);
  command.add_option("--log", settings.Log_File, "Save the log to FILE at the end")
      ->type_name("FILE");
}

int Play_Script(Console_Window& window, Output& output, const Arguments& arguments) {
  const std::string& file = arguments.Script_File;
  if (arguments.Settings.Whole_Route) window.Toggle_Whole_Route();
  if (file == "-") return Run_Script(window, output, std::cin);
  std::ifstream script(std::filesystem::path(std::u8string(file.begin(), file.end())),
                       std::ios::binary);
  if (!script) {
    Write_Error("Cannot read " + file);
    return Exit_Wrong_Usage;
  }
  return Run_Script(window, output, script);
}

int Run(const CLI::App& app, const Arguments& arguments, Output& output) {
  Console_Window window(output);
  const bool check = app.got_subcommand("check");
  const bool update = app.got_subcommand("update");
  window.Shows_Log = check || update;
  window.Shows_Status = window.Shows_Log && Error_Is_Terminal();
  window.Start_On(arguments.Root);
  window.Show_Recovery();
  if (check) return Run_Command(window, Control::cmdCheck, arguments.Settings);
  if (update) return Run_Command(window, Control::cmdUpdate, arguments.Settings);
  if (app.got_subcommand("backups")) return List_Backups(window, output, arguments.Backup);
  if (app.got_subcommand("restore")) return Restore_Backup(window, output, arguments.Backup);
  if (app.got_subcommand("references")) {
    return Count_References(window, output, arguments.Settings.Route);
  }
  if (app.got_subcommand("routes")) return List_Routes(window, output);
  return Play_Script(window, output, arguments);
}

int Run_Program(std::vector<std::string> command_line) {
  Arguments arguments;
  CLI::App app("Keeps routes in line with the installed global track catalogue.", "rivelt-cli");
  app.set_version_flag("--version", RIVELT_VERSION);
  app.require_subcommand(1);
  app.add_option(
         "--root", arguments.Root,
         "The installation's folder; without it the registry is asked, and failing that the "
         "parent of the working folder is taken")
      ->type_name("DIR");
  app.add_subcommand("routes", "List the installed routes and their folders");
  Describe_Settings(
      *app.add_subcommand("check", "Write converted copies of a route's files to Quenby/tmp"),
      arguments.Settings);
  CLI::App& update =
      *app.add_subcommand("update", "Check, and move the copies over the route's files");
  Describe_Settings(update, arguments.Settings);
  update.add_flag("--yes", arguments.Settings.Yes, "Do not ask");
  app.add_subcommand("references", "Count where the numbers in a route's files lead")
      ->add_option("ROUTE", arguments.Settings.Route, "The route's name")
      ->required();
  CLI::App& backups =
      *app.add_subcommand("backups", "List the originals that updates have replaced");
  backups.add_option("ROUTE", arguments.Backup.Route, "Only those of this route");
  CLI::App& restore =
      *app.add_subcommand("restore", "Put the originals of an update back over a route's files");
  restore.add_option("ROUTE", arguments.Backup.Route, "The route's name")->required();
  restore
      .add_option("--backup", arguments.Backup.Time,
                  "The update's time as `backups` prints it; the newest without it")
      ->type_name("TIME");
  restore.add_flag("--yes", arguments.Backup.Yes, "Do not ask");
  CLI::App& script =
      *app.add_subcommand("script", "Press the program's controls as a script tells");
  Describe_Whole_Route(script, arguments.Settings);
  script.add_option("FILE", arguments.Script_File, "The script; - or none is standard input");

  std::reverse(command_line.begin(), command_line.end());  // as the parser wants it
  try {
    app.parse(command_line);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? Exit_Done : Exit_Wrong_Usage;
  }
  Output output;
  int status = Exit_Wrong_Usage;
  try {
    status = Run(app, arguments, output);
  } catch (const Wrong_Usage& usage) {
    output.Flush();
    std::cerr << usage.Message;
  }
  output.End_Line();
  output.Flush();
  return status;
}

}  // namespace
}  // namespace rivelt

int main(int argc, char** argv) {
  rivelt::Prepare_Console();
  try {
    return rivelt::Run_Program(rivelt::Command_Line(argc, argv));
  } catch (const rivelt::Interrupted&) {
    return rivelt::End_Requested() ? rivelt::Exit_Interrupted : rivelt::Exit_Failure;
  }
}
