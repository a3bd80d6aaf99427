// The program without a screen: presses the same controls of the same form.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <new>
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
  bool Whole_Report = false;
  bool Yes = false;
  std::string Script_File = "-";
};

CLI::App& Add_Command(CLI::App& app, const std::string& name, const std::string& what,
                      const std::string& example) {
  CLI::App& command = *app.add_subcommand(name, what);
  command.fallthrough();  // --root may come after the command, too
  command.footer("Example:\n  rivelt-cli " + name + example);
  return command;
}

CLI::Option& Add_Route(CLI::App& command, auto& route) {
  return *command.add_option("ROUTE", route, "The route's name or folder, as `routes` prints them")
              ->type_name("");
}

void Add_Yes(CLI::App& command, bool& yes) {
  command.add_flag("-y,--yes", yes, "Do not ask");
}

void Add_Whole_Route(CLI::App& command, bool& whole_route) {
  command.add_flag("--whole-route", whole_route,
                   "Convert the route's own numbers in databases and track objects, too");
}

void Add_Settings(CLI::App& command, Route_Settings& settings) {
  Add_Route(command, settings.Route).required();
  command.add_flag("--all", settings.All_Sections,
                   "Check all track sections, not dynamic track only");
  const auto add_shapes = [&](const char* name, auto& shapes, const char* type, const char* what) {
    command.add_option(name, shapes, what)->type_name(type)->allow_extra_args(false);
  };
  add_shapes("--replace", settings.Replacements, "OLD=NEW",
             "Replace the shape OLD by NEW; implies --all");
  add_shapes("--delete", settings.Deletions, "OLD",
             "Remove the shape OLD (with --replace up to five); implies --all");
  Add_Whole_Route(command, settings.Whole_Route);
  command.add_option("--log", settings.Log_File, "Save the log to FILE at the end")
      ->type_name("FILE");
}

void Add_Conversions(CLI::App& app, Arguments& arguments) {
  Add_Settings(Add_Command(app, "check", "Write converted copies of a route's files to Quenby/tmp",
                           " Ambrewick --all --whole-route"),
               arguments.Settings);
  CLI::App& update = Add_Command(app, "update", "Check, and move the copies over the route's files",
                                 " Ambrewick --whole-route --replace A2t500R10d=A1t500r10d.s");
  Add_Settings(update, arguments.Settings);
  Add_Yes(update, arguments.Yes);
}

void Add_Backups(CLI::App& app, Arguments& arguments) {
  Backup_Settings& settings = arguments.Backup;
  Add_Route(
      Add_Command(app, "backups", "List the originals that updates have replaced", " Ambrewick"),
      settings.Route);
  CLI::App& restore = Add_Command(app, "restore", "Make a route what it was before an update",
                                  " Ambrewick --backup \"2026-11-22 20.15.07\"");
  Add_Route(restore, settings.Route).required();
  restore
      .add_option("--backup", settings.Time,
                  "The update's time as `backups` prints it; without it the newest")
      ->type_name("TIME");
  Add_Yes(restore, arguments.Yes);
}

void Add_All(CLI::App& app, Arguments& arguments) {
  app.set_version_flag("--version", "rivelt-cli " RIVELT_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Example:\n  rivelt-cli --root ~/msts routes\n\n"
      "`rivelt-cli COMMAND --help` describes a command.");
  app.add_option("--root", arguments.Root,
                 "The installation's folder; without it the one in the registry,\n"
                 "or else the parent of the working folder")
      ->type_name("DIR");
  Add_Command(app, "routes", "List the installed routes and their folders", "");
  Add_Conversions(app, arguments);
  CLI::App& references = Add_Command(
      app, "references", "Count where the numbers in a route's files lead", " Ambrewick --list");
  Add_Route(references, arguments.Settings.Route).required();
  references.add_flag("--list", arguments.Whole_Report,
                      "List every number that leads to nowhere, and every unknown shape");
  CLI::App& text = Add_Command(app, "text", "Convert a route's binary files to text", " Kellcombe");
  Add_Route(text, arguments.Settings.Route).required();
  Add_Yes(text, arguments.Yes);
  Add_Backups(app, arguments);
  CLI::App& script =
      Add_Command(app, "script", "Press the program's controls as a script tells", " steps.txt");
  Add_Whole_Route(script, arguments.Settings.Whole_Route);
  script.add_option("FILE", arguments.Script_File, "The script; - or none is standard input")
      ->type_name("");
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

int Run_Started(const CLI::App& app, const Arguments& arguments, Console_Window& window,
                Output& output) {
  if (app.got_subcommand("script")) return Play_Script(window, output, arguments);
  if (window.Is_Stopped()) return Exit_Failure;
  if (app.got_subcommand("check")) return Check_Route(window, arguments.Settings);
  if (app.got_subcommand("update")) return Update_Route(window, arguments.Settings);
  if (app.got_subcommand("backups")) return List_Backups(window, output, arguments.Backup);
  if (app.got_subcommand("restore")) return Restore_Backup(window, output, arguments.Backup);
  if (app.got_subcommand("references")) {
    return Count_References(window, output, arguments.Settings.Route, arguments.Whole_Report);
  }
  if (app.got_subcommand("text")) return Convert_To_Text(window, output, arguments.Settings.Route);
  return List_Routes(window, output);
}

int Run(const CLI::App& app, const Arguments& arguments, Console_Window& window, Output& output) {
  window.Shows_Log = app.got_subcommand("check") || app.got_subcommand("update");
  window.Yes = arguments.Yes;
  const bool asks =
      app.got_subcommand("update") || app.got_subcommand("restore") || app.got_subcommand("text");
  if (asks && !window.Yes && !Input_Is_Terminal()) {
    throw Wrong_Usage{"There is no terminal to ask on; with --yes it is done without asking.\n"};
  }
  window.Start_On(arguments.Root);
  window.Report_Start();
  const int status = Run_Started(app, arguments, window, output);
  output.End_Line();
  output.Flush();
  if (End_Requested()) throw Interrupted();
  return status;
}

int Run_To_The_End(const CLI::App& app, const Arguments& arguments) {
  Output output;
  Console_Window window(output);
  try {
    return Run(app, arguments, window, output);
  } catch (const Wrong_Usage& usage) {
    std::cerr << usage.Message;
    return Exit_Wrong_Usage;
  } catch (const Failure& failure) {
    Write_Error(u"Reason: " + failure.Reason());
    return Exit_Failure;
  } catch (const std::bad_alloc&) {
    Write_Error("Reason: not enough memory");
    return Exit_Failure;
  } catch (const Interrupted&) {
    if (window.Shows_Log || End_Requested()) window.Report_Interruption();
    return End_Requested() ? Exit_Interrupted : Exit_Failure;
  }
}

// In words that lead on.
std::string Wrong_Usage_Text(const CLI::App* app, const CLI::Error& error) {
  std::string text = error.what();
  const std::vector<std::string> rest = app->remaining(true);
  if (!rest.empty() && rest.front().front() != '-') {
    if (app->get_subcommands().empty()) {
      text = "There is no command \"" + rest.front() + "\".";
    } else {
      text = "Not expected: " + CLI::detail::join(rest, " ") +
             "\nIf a route's name has blanks, quote the name.";
    }
  }
  return text + "\nRun with --help for more information.\n";
}

int Run_Program(std::vector<std::string> command_line) {
  Arguments arguments;
  CLI::App app("Keeps routes in line with the installed global track catalogue.", "rivelt-cli");
  app.failure_message(Wrong_Usage_Text);
  Add_All(app, arguments);
  std::reverse(command_line.begin(), command_line.end());  // as the parser wants it
  try {
    app.parse(command_line);
  } catch (const CLI::ParseError& error) {
    if (app.exit(error) != 0) return Exit_Wrong_Usage;
    return std::cout.flush() ? Exit_Done : Exit_Failure;  // the help or the version
  }
  return Run_To_The_End(app, arguments);
}

}  // namespace
}  // namespace rivelt

int main(int argc, char** argv) {
  rivelt::Prepare_Console();
  return rivelt::Run_Program(rivelt::Command_Line(argc, argv));
}
