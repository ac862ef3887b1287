#include <QApplication>
#include <QMainWindow>

/// The peer: the least that shows a window.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(1000, 700);
  window.show();
  return QApplication::exec();
}
