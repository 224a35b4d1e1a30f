// 报表模板文件: every template that the program prints through, where it lies, and those that it brings along.
#pragma once

#include "platform/report/report.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <span>
#include <string_view>
#include <vector>

namespace jxc {

/// A template of the program, as it is offered for design.
struct KnownTemplate {
  std::u16string_view name;     // of the file, without ".fr3": "spxs2"
  std::u16string_view caption;  // 销售单(含零售价)
  std::u16string_view group;    // 采购, 销售, 库存 …
  bool isAwaited = false;       // the screen that will print through it is still to come
};
/// Those of one group one after another.
std::span<const KnownTemplate> knownTemplates();

/// The one of that name, with or without ".fr3"; null for a file of the shop's own.
const KnownTemplate* findTemplate(QStringView name);

/// A design that the shop has saved under a name of its own.
struct OwnTemplate {
  QString file;                         // "双联.fr3"
  const KnownTemplate* kind = nullptr;  // what it is a design of; null: it does not tell
  QString caption() const { return file.chopped(4); }
};
/// Those of the program directory, by name.
std::vector<OwnTemplate> ownTemplates();
/// The file that this station prints through where the program asks for this template: itself, or a design of the
/// shop's own that was set in its place and is still there.
QString templateInUse(QStringView name);
/// Sets a design in place of the template; the template's own file takes it back. Throws DbError(File).
void useTemplate(QStringView name, const QString& file);

/// "report/spxs.fr3" of the program directory; the name with or without ".fr3".
QString templatePath(QStringView name);
/// An empty report of that template, with the clock of the program and its picture folder. Throws
/// report::TemplateError when the file is missing or damaged.
report::Report openReport(QStringView name);
/// The same over a template that is at hand, as in the designer.
report::Report reportOver(report::Template t);
/// A look at a template with its own samples, for the designer.
report::Report sampleOf(const report::Template& t);

/// Writes the templates that the program brings along into the program directory, those that are not there. What the
/// shop has changed stays. The names written.
QStringList bringTemplates();
/// The file as it was delivered; empty when the program brings none of that name.
QByteArray deliveredTemplate(QStringView name);

}  // namespace jxc
