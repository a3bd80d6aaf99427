// Times a check with all track sections in the window beside the same check without a screen, by
// turns. Usage: check_in_window INSTALLATION [ROUNDS]
//
// Counts processor time, which the load of the machine changes least. The logs are compared.

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "platform/machine.h"
#include "platform/memory/memory_window.h"
#include "platform/qt/qt_application.h"
#include "platform/qt/qt_window.h"

namespace rivelt {
namespace {

double Seconds_Of(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double Without_Screen(Registry& registry, Text& log) {
  Memory_Window window;
  window.Start(registry, Machine_Files);
  window.Pick(Control::cmbRoutes, window.List(Control::cmbRoutes).Entry(0));
  window.Select(Control::optDynamic_1);
  const double seconds = Seconds_Of([&] { window.Press(Control::cmdCheck); });
  log = window.Log();
  return seconds;
}

double In_Window(Registry& registry, Text& log) {
  Qt_Window window;
  window.Start(registry, Machine_Files);
  auto& routes = static_cast<QComboBox&>(window.Widget(Control::cmbRoutes));
  routes.setCurrentIndex(0);
  emit routes.activated(0);
  static_cast<QAbstractButton&>(window.Widget(Control::optDynamic_1)).click();
  auto& check = static_cast<QAbstractButton&>(window.Widget(Control::cmdCheck));
  const double seconds = Seconds_Of([&] { check.click(); });
  log = window.Read_Text(Control::txtMessages);
  return seconds;
}

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

int Run(const std::string& installation, int rounds) {
  const auto registry = Fixed_Registry(installation);
  std::vector<double> without;
  std::vector<double> within;
  for (int round = 0; round < rounds; ++round) {
    Text log_without;
    Text log_within;
    without.push_back(Without_Screen(*registry, log_without));
    within.push_back(In_Window(*registry, log_within));
    if (log_without != log_within) {
      std::cerr << "the two checks differ\n";
      return 1;
    }
  }
  std::cout << "without a screen " << Median(without) << " s, in the window " << Median(within)
            << " s, " << Median(within) / Median(without) << " times\n";
  return 0;
}

}  // namespace
}  // namespace rivelt

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  rivelt::Prepare_Qt();
  if (argc < 2) {
    std::cerr << "usage: check_in_window INSTALLATION [ROUNDS]\n";
    return 2;
  }
  return rivelt::Run(argv[1], argc > 2 ? std::max(1, std::atoi(argv[2])) : 5);
}
