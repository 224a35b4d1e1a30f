// 报表: a template, the variables and the rows of one detail query on their way to pages.
#pragma once

#include "engine/row_set.h"
#include "platform/report/pages.h"
#include "platform/report/template.h"

#include <QString>
#include <QStringView>

#include <functional>
#include <map>
#include <span>

namespace jxc::report {

/// A function that expressions may call besides those of the dialect; throws std::exception for what it refuses.
using ReportFunction = std::function<Value(std::span<const Value>)>;

/// A text as an expression: in single quotes, quotes inside doubled.
QString quoted(QStringView text);

/// What is printed. Copies are cheap enough to hand over by value. Names are compared without regard to case.
///
///     Report r(loadTemplate("report/spxs.fr3"));
///     r.setText(u"khName", name);             // or r.setVariable(u"khName", "'" + name + "'")
///     r.setRows(openSelect(printLineSql(number, "XS")));
///     const Pages pages = r.prepare();
class Report {
 public:
  explicit Report(Template t) : template_(std::move(t)) {}

  const Template& reportTemplate() const { return template_; }

  /// A variable holds expression text: text is quoted, numbers are bare.
  void setVariable(QStringView name, const QString& expression);
  void setText(QStringView name, QStringView text) { setVariable(name, quoted(text)); }
  void setNumber(QStringView name, double number);
  /// The expression of a variable; empty when it is not set.
  QString variable(QStringView name) const;

  /// The detail query; columns by name. A row whose fields are all empty prints as an empty line: frames stay, texts
  /// do not.
  void setRows(RowSet rows) { rows_ = std::move(rows); }
  const RowSet& rows() const { return rows_; }

  /// "Capitals" …; `least` and `most` arguments.
  void setFunction(QStringView name, int least, int most, ReportFunction function);
  /// What a picture item with the content "drawing:NAME" shows.
  void setDrawing(QStringView name, Drawing drawing);
  /// Where pictures are found whose name is no whole path.
  void setPictureFolder(const QString& folder) { pictureFolder_ = folder; }
  /// A form with so many lines a page (0: as many as find room): the page ends after them, and no text makes a row or
  /// the foot higher, type gets smaller instead. Rows that would not all fit with the foot get lower, as far as they
  /// can still be read; not on forms that are printed already, whose places are given.
  void setFixedLines(int lines);
  /// Labels: cells of the first sheet that are used up already.
  void setSkippedCells(int cells) { skippedCells_ = cells; }
  /// What `date()`, `time()` and `now()` say: "yyyy-MM-dd HH:mm:ss"; the clock of the machine when empty.
  void setNow(const QString& now) { now_ = now; }

  /// Lays out all pages. Never throws for what stands in a template or a row: an expression that fails prints a visible
  /// mark and is listed in `Pages::faults`.
  Pages prepare() const;

 private:
  struct Function {
    int least, most;
    ReportFunction call;
  };
  friend struct Layout;

  Template template_;
  std::map<QString, QString> variables_;  // by lower-case name
  std::map<QString, Function> functions_;
  RowSet rows_;
  std::map<QString, Drawing> drawings_;  // by lower-case name
  QString pictureFolder_, now_;
  int skippedCells_ = 0, fixedLines_ = 0;
};

/// The report of the designer's preview: the samples of the template, `rowCount` rows.
Report sampleReport(const Template& t, int rowCount = 12);

}  // namespace jxc::report
