// What the window on Qt costs the person in front of it, on a screen that nobody sees.

#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <memory>

#include "platform/memory/memory_files.h"
#include "platform/qt/log_view.h"
#include "platform/qt/qt_application.h"
#include "platform/qt/qt_window.h"
#include "system/fixed_registry.h"
#include "text/primitives.h"

namespace rivelt::bench {
namespace {

// An installation of one route whose shapes come in an order far from the sorted one.
class Installation {
 public:
  explicit Installation(Long shapes) {
    Text catalogue = u"TrackSections ( 400 ) TrackShapes ( 500 ";
    for (Long i = 0; i < shapes; ++i) {
      const auto number = static_cast<Long>(i * 7919LL % shapes);
      catalogue += Concatenate({u"TrackShape ( ", Number_Text(i),
                                u" FileName ( A_rather_long_name_of_a_track_shape_",
                                Trim_Text(Number_Text(number)), u".s ) ) "});
    }
    Disk.Put_File(u"\\train\\global\\tsection.dat", catalogue);
    Disk.Put_File(u"\\train\\routes\\one\\one.trk", u"Name ( one )");
    Disk.Put_File(u"\\train\\routes\\one\\world\\w.w", u"Tr_Worldfile ( )");
  }

  void Start(Qt_Window& window) {
    window.Start(System_Registry, [this] { return Memory_Files(Disk); });
  }

  Memory_Disk Disk;

 private:
  Fixed_Registry System_Registry{"\\train"};
};

QComboBox& First_List(Qt_Window& window) {
  return static_cast<QComboBox&>(window.Widget(Control::cmbTracks_0));
}

// From nothing to the prompt with the form painted.
void Start_The_Program(benchmark::State& state) {
  const auto shapes = static_cast<Long>(state.range(0));
  Installation installation(shapes);
  for (auto _ : state) {
    Qt_Window window;
    installation.Start(window);
    window.Form_Widget().repaint();
    if (First_List(window).count() != shapes + 1) state.SkipWithError("shapes are missing");
  }
}
BENCHMARK(Start_The_Program)->Arg(15'000)->Unit(benchmark::kMillisecond);

// From the click until the entries are painted.
void Open_A_List(benchmark::State& state) {
  Installation installation(static_cast<Long>(state.range(0)));
  Qt_Window window;
  installation.Start(window);
  window.Enable(Control::Transform, true);
  window.Enable(Control::cmbTracks_0, true);
  QComboBox& list = First_List(window);
  for (auto _ : state) {
    list.showPopup();
    QCoreApplication::processEvents();
    list.view()->viewport()->repaint();
    if (!list.view()->isVisible()) state.SkipWithError("the list has not opened");
    state.PauseTiming();
    list.hidePopup();
    QCoreApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(Open_A_List)->Arg(40'000)->Unit(benchmark::kMillisecond);

// The lines of a long check, in the middle of one, until the last of them is on the screen; older
// ones may follow. The time of a line must not grow with the number of lines before it.
void Append_Log_Lines(benchmark::State& state) {
  const Text_View line = u"Unknown shape A1t100mStrt.s, id  12345\r\n";
  const auto count = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    Installation installation(1);
    Qt_Window window;
    installation.Start(window);
    auto& routes = static_cast<QComboBox&>(window.Widget(Control::cmbRoutes));
    routes.setCurrentIndex(0);
    emit routes.activated(0);
    auto& log = static_cast<Log_View&>(window.Widget(Control::txtMessages));
    installation.Disk.On_Next_Read = [&] {
      state.ResumeTiming();
      for (std::size_t i = 0; i < count; ++i) {
        window.Append_Log(line);
        window.Yield();
      }
      log.Show_News();
      log.repaint();
      state.PauseTiming();
    };
    static_cast<QAbstractButton&>(window.Widget(Control::cmdCheck)).click();
    if (log.Content().size() < count * line.size()) state.SkipWithError("lines are missing");
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(Append_Log_Lines)
    ->RangeMultiplier(2)
    ->Range(50'000, 200'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rivelt::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  rivelt::Prepare_Qt();
  benchmark::RunSpecifiedBenchmarks();
}
