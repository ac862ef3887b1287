#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryFile>

namespace {

/// Two screens that nobody sees: as large as people have them, and as low as on a small laptop.
void useHiddenScreen(QTemporaryFile& settings) {
  settings.open();
  settings.write(R"({"screens": [{"name": "hidden", "x": 0, "y": 0, "width": 1680, "height": 1050,
    "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}, {"name": "low", "x": 1680, "y": 0,
    "width": 1366, "height": 768, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  settings.flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + settings.fileName().toLocal8Bit());
}

}  // namespace

/// Tests of windows run without a screen unless the environment names one.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QTemporaryFile screen;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) useHiddenScreen(screen);
  QApplication application(argc, argv);
  QApplication::setStyle("Fusion");
  return RUN_ALL_TESTS();
}
