#include "kgen_ctl_plugin.h"

#include <kgen_ctl.h>

#include <QIcon>

QString KGenCtlPlugin::name() const { return "KGenCtl"; }
QString KGenCtlPlugin::group() const { return "Data logging"; }
QString KGenCtlPlugin::toolTip() const { return "Program generator for K700 data loggers"; }
QString KGenCtlPlugin::whatsThis() const {
  return "The main panel of the program generator: describes a logger and writes its program.";
}
QString KGenCtlPlugin::includeFile() const { return "kgen_ctl.h"; }
QIcon KGenCtlPlugin::icon() const { return QIcon(":/kgen/icons/kgen.svg"); }
bool KGenCtlPlugin::isContainer() const { return false; }
QWidget* KGenCtlPlugin::createWidget(QWidget* parent) { return new KGenCtl(parent); }
