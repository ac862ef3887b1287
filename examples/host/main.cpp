#include <kgen_ctl.h>

#include <QApplication>
#include <QTextStream>

/// A host program around the control: kgen_host [PROJECT.GN7]
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  KGenCtl control;
  control.setRegistryApp("kgen-host");
  QObject::connect(&control, &KGenCtl::FileOpened, [](const QString& project) {
    QTextStream(stdout) << "opened " << project << Qt::endl;
  });
  QObject::connect(&control, &KGenCtl::DownloadRequest, [](const QString& program) {
    QTextStream(stdout) << "send " << program << Qt::endl;
  });
  QObject::connect(&control, &KGenCtl::QuitRequest, &application, &QApplication::quit);
  if (argc > 1) control.OpenFile(QString::fromLocal8Bit(argv[1]));
  control.show();
  return application.exec();
}
