#include <gtest/gtest.h>

#include <QPluginLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <memory>

/// The form designer takes the plugin for one of its own and puts the control on a form.
TEST(DesignerPlugin, LoadsAndMakesTheControl) {
  QPluginLoader loader(KGEN_PLUGIN);
  auto* plugin = qobject_cast<QDesignerCustomWidgetInterface*>(loader.instance());
  ASSERT_NE(plugin, nullptr) << loader.errorString().toStdString();
  EXPECT_EQ(plugin->name(), "KGenCtl");
  EXPECT_FALSE(plugin->icon().isNull());
  const std::unique_ptr<QWidget> control(plugin->createWidget(nullptr));
  EXPECT_STREQ(control->metaObject()->className(), "KGenCtl");
}
