#include "ui/file_dialogs.h"

#include "core/file_names.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

namespace jxc::ui {
namespace file_dialogs_detail {

std::function<QString(const QString&, const QString&)>& answer() {
  static std::function<QString(const QString&, const QString&)> given;
  return given;
}

std::function<bool(const QString&)>& viewer() {
  static std::function<bool(const QString&)> given;
  return given;
}

QString& lastFolder() {
  static QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return folder;
}

void remember(const QString& file) {
  if (!file.isEmpty()) lastFolder() = QFileInfo(file).absolutePath();
}

QStringList endings(const QString& filters) {
  static const QRegularExpression kEnding(QStringLiteral("\\*(\\.\\w+)"));
  QStringList found;
  for (auto match = kEnding.globalMatch(filters); match.hasNext();)
    found << match.next().captured(1);
  return found;
}

QString withEnding(const QString& file, const QString& filters, const QString& chosen) {
  const QStringList known = endings(filters);
  const bool hasEnding = std::any_of(known.begin(), known.end(),
                                     [&](const QString& ending) { return file.endsWith(ending, Qt::CaseInsensitive); });
  return file.isEmpty() || hasEnding ? file : file + endings(chosen).value(0);
}

}  // namespace file_dialogs_detail

void setFileAnswer(std::function<QString(const QString&, const QString&)> answer) {
  file_dialogs_detail::answer() = std::move(answer);
}

QString chooseSaveFile(QWidget* parent, const QString& title, const QString& name, const QString& filters,
                       const QString& folder) {
  using namespace file_dialogs_detail;
  if (answer()) return withEnding(answer()(asFileName(name), filters), filters, filters);
  QFileDialog dialog(parent, title, folder.isEmpty() ? lastFolder() : folder);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilters(filters.split(QStringLiteral(";;")));
  dialog.selectFile(asFileName(name));
  // The dialog puts the ending of the chosen filter behind a name that has none, before it asks about a file that is
  // there.
  const auto follow = [&dialog](const QString& filter) {
    const QStringList known = endings(filter);
    if (!known.isEmpty()) dialog.setDefaultSuffix(known.front());
  };
  follow(dialog.nameFilters().front());
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  QString file = withEnding(dialog.selectedFiles().front(), filters, dialog.selectedNameFilter());
  if (folder.isEmpty()) remember(file);
  return file;
}

QString chooseOpenFile(QWidget* parent, const QString& title, const QString& filters) {
  using namespace file_dialogs_detail;
  if (answer()) return answer()({}, filters);
  const QString file = QFileDialog::getOpenFileName(parent, title, lastFolder(), filters);
  remember(file);
  return file;
}

QString chooseFolder(QWidget* parent, const QString& title) {
  using namespace file_dialogs_detail;
  if (answer()) return answer()({}, {});
  const QString folder = QFileDialog::getExistingDirectory(parent, title, lastFolder());
  if (!folder.isEmpty()) lastFolder() = folder;
  return folder;
}

bool openWithViewer(const QString& file) {
  if (const auto& answer = file_dialogs_detail::viewer()) return answer(file);
  return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

void setViewerAnswer(std::function<bool(const QString& file)> answer) {
  file_dialogs_detail::viewer() = std::move(answer);
}

}  // namespace jxc::ui
