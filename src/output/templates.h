// 报表模板文件: every template that the program prints through, where it lies, and those that it brings along.
#pragma once

#include "platform/report/report.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <span>
#include <string_view>

namespace jxc {

/// A template of the program, as it is offered for design.
struct KnownTemplate {
  std::u16string_view name;     // of the file, without ".fr3": "spxs2"
  std::u16string_view caption;  // 销售单(含零售价)
  std::u16string_view group;    // 采购, 销售, 库存 …
};
/// Those of one group one after another.
std::span<const KnownTemplate> knownTemplates();

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
