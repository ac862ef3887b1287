#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>

namespace control {
class Session;
struct SessionPorts;
}  // namespace control

namespace ui {
class SetupWindow;
class frmNewProject;
}  // namespace ui

/// The program generator as a control: its main panel with a button for each setup window and the
/// summary of the open project, to be embedded by a host program. Properties, methods and signals
/// are the whole interface; everything runs on the thread of the user interface. What goes wrong is
/// shown in a box, nothing throws.
class Q_DECL_EXPORT KGenCtl : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString AppPath READ AppPath WRITE setAppPath)
  Q_PROPERTY(QString TVNItemNumber READ TVNItemNumber)
  Q_PROPERTY(QString CurrentFileName READ CurrentFileName NOTIFY Changed)
  Q_PROPERTY(QString CurBasicFileName READ CurBasicFileName NOTIFY Changed)
  Q_PROPERTY(QString GenFilePath READ GenFilePath WRITE setGenFilePath)
  Q_PROPERTY(QString HelpFileName READ HelpFileName)
  Q_PROPERTY(QString HelpPath READ HelpPath WRITE setHelpPath)
  Q_PROPERTY(QString HelpText READ HelpText)
  Q_PROPERTY(int InternalHelpContextID READ InternalHelpContextID)
  Q_PROPERTY(QString RegistryApp READ RegistryApp WRITE setRegistryApp)
  Q_PROPERTY(bool SoftColors READ SoftColors WRITE setSoftColors)
  Q_PROPERTY(bool SoftTextHighlight READ SoftTextHighlight WRITE setSoftTextHighlight)
  Q_PROPERTY(bool UseLegacy READ UseLegacy WRITE setUseLegacy)
  Q_PROPERTY(QString Version READ Version)
  Q_PROPERTY(QString VersionDate READ VersionDate)
  Q_PROPERTY(QString HostApp READ HostApp WRITE setHostApp)

 public:
  /// With the files, clock, settings and programs of this machine.
  explicit KGenCtl(QWidget* parent = nullptr);
  /// With others in their place, which must outlive the control. Its host hears what signals tell.
  KGenCtl(const control::SessionPorts& ports, QWidget* parent);
  ~KGenCtl() override;

  [[nodiscard]] QString AppPath() const;
  void setAppPath(const QString& path);
  [[nodiscard]] QString TVNItemNumber() const;
  [[nodiscard]] QString CurrentFileName() const;
  [[nodiscard]] QString CurBasicFileName() const;
  [[nodiscard]] QString GenFilePath() const;
  void setGenFilePath(const QString& path);
  [[nodiscard]] QString HelpFileName() const;
  [[nodiscard]] QString HelpPath() const;
  void setHelpPath(const QString& path);
  [[nodiscard]] QString HelpText() const;
  [[nodiscard]] int InternalHelpContextID() const;
  [[nodiscard]] QString RegistryApp() const;
  void setRegistryApp(const QString& application);
  [[nodiscard]] bool SoftColors() const;
  void setSoftColors(bool soft);
  [[nodiscard]] bool SoftTextHighlight() const;
  void setSoftTextHighlight(bool soft);
  [[nodiscard]] bool UseLegacy() const;
  void setUseLegacy(bool legacy);
  [[nodiscard]] QString Version() const;
  [[nodiscard]] QString VersionDate() const;
  [[nodiscard]] QString HostApp() const;
  void setHostApp(const QString& application);

  /// Hands programs to the real-time host; false when its toolbar server is not connected.
  void setDunmoreServer(std::function<bool(const QString& program)> server);

  // For programs that are built with the engine.
  [[nodiscard]] control::Session& session();
  /// Opens the setup window of a button 0 to 15, or brings it to the front.
  ui::SetupWindow* openWindow(int button);
  /// Opens the window that plans a new project from a list of channels, or brings it to the front.
  ui::frmNewProject* openNewProject();

 public Q_SLOTS:  // NOLINT: a word of moc
  void LongToMessage(int code);
  void StringToMessage(const QString& message);
  bool DunmoreDownload(const QString& program);
  void CloseSession();
  /// Six colours "RRGGBB": form background, panel background, panel text, summary background,
  /// summary text, summary highlight.
  [[nodiscard]] QStringList GetSelectedColors() const;
  bool OpenFile(const QString& path);
  void PrintSelect();
  void SetSelectedColors(const QStringList& colors);
  void ShowHelpFile();
  void OffSaveDownload();
  bool AskToSaveAll();
  bool SaveDldFile();
  void ShowOptions();
  void SetQuitButton(bool shown);
  void SetSaveDownload(bool shown);
  void FormCleanup();

 Q_SIGNALS:
  /// A project was read.
  void FileOpened(const QString& project);
  /// The program, by its full path, is to be sent to the logger.
  void DownloadRequest(const QString& program);
  /// The user pressed Quit, and the project may be closed.
  void QuitRequest();
  /// The project, its file or the settings are others than before.
  void Changed();
  /// One line for the log of the host.
  void Note(const QString& line);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};
