// 模板文件: report templates as files `report/*.fr3`, XML of this program; docs/report-templates.md describes them.
#pragma once

#include "platform/report/template.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <stdexcept>
#include <vector>

namespace jxc::report {

/// Why a template cannot be loaded or saved; the message is meant for the operator and names the file.
class TemplateError : public std::runtime_error {
 public:
  enum class Kind {
    Missing,     // no such file
    Unreadable,  // the system refuses
    Damaged,     // no XML, cut off, or not of this format
    Newer,       // made by a later version of the program
    Exists,      // saving: there is a file already
    WouldLose,   // saving: the file there is damaged or newer, its contents would be lost
    Unwritable   // saving: disk full, write-protected …
  };
  TemplateError(Kind kind, const QString& message)
      : std::runtime_error(message.toStdString()), kind_(kind), message_(message) {}
  Kind kind() const { return kind_; }
  const QString& message() const { return message_; }

 private:
  Kind kind_;
  QString message_;
};

/// The version that is written; older ones are read, newer ones are refused.
inline constexpr int templateVersion = 1;

/// Throws TemplateError.
Template loadTemplate(const QString& path);
/// The same from memory; `name` stands for the file in messages.
Template parseTemplate(const QByteArray& xml, const QString& name = {});

enum class SaveMode {
  New,      // refuses when there is a file
  Replace,  // keeps the file before as a backup; refuses when that one is damaged or newer
  Force     // the operator has been asked: replaces whatever is there, keeps it as a backup
};
/// Written beside and moved into place. Throws TemplateError; then the file is as before.
void saveTemplate(const Template& t, const QString& path, SaveMode mode);
QByteArray templateXml(const Template& t);

/// A design that was replaced: "<file>.20261126-041500.bak", named after the moment at which it had been saved.
struct TemplateBackup {
  QString path;
  QDateTime savedAt;
};
/// Those of this file, the newest first. The twenty newest are kept.
std::vector<TemplateBackup> backupsOf(const QString& path);

}  // namespace jxc::report
