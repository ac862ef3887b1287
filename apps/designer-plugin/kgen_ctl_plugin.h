#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/// Offers the control to the form designer.
class KGenCtlPlugin final : public QObject, public QDesignerCustomWidgetInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QDesignerCustomWidgetInterface_iid)
  Q_INTERFACES(QDesignerCustomWidgetInterface)
 public:
  using QObject::QObject;
  [[nodiscard]] QString name() const override;
  [[nodiscard]] QString group() const override;
  [[nodiscard]] QString toolTip() const override;
  [[nodiscard]] QString whatsThis() const override;
  [[nodiscard]] QString includeFile() const override;
  [[nodiscard]] QIcon icon() const override;
  [[nodiscard]] bool isContainer() const override;
  QWidget* createWidget(QWidget* parent) override;
};
