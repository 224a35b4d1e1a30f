#include "platform/report/report.h"

#include "platform/report/layout.h"

namespace jxc::report {

QString quoted(QStringView text) {
  QString result = text.toString();
  result.replace(u'\'', QStringLiteral("''"));
  return u'\'' + result + u'\'';
}

void Report::setVariable(QStringView name, const QString& expression) {
  variables_[name.toString().toLower()] = expression;
}

void Report::setNumber(QStringView name, double number) {
  setVariable(name, numberText(number));
}

QString Report::variable(QStringView name) const {
  const auto found = variables_.find(name.toString().toLower());
  return found == variables_.end() ? QString() : found->second;
}

void Report::setFunction(QStringView name, int least, int most, ReportFunction function) {
  functions_[name.toString().toLower()] = {least, most, std::move(function)};
}

void Report::setDrawing(QStringView name, Drawing drawing) {
  drawings_[name.toString().toLower()] = std::move(drawing);
}

namespace report_detail {

constexpr double kLowestRow = 3.2;  // millimetres: one line of 6 points

/// What the rows of one page may take together, with the foot behind them.
double roomForRows(const Template& t) {
  double room = t.page.pageHeight() - t.page.top - t.page.bottom;
  for (const Band& band : t.bands)
    if (band.kind != BandKind::MasterData && band.kind != BandKind::Overlay) room -= band.height;
  return room;
}

void lowerRows(Template& t, double share) {
  for (Band& band : t.bands) {
    if (band.kind != BandKind::MasterData) continue;
    band.height *= share;
    for (Item& item : band.items) {
      item.y *= share;
      item.height *= share;
    }
  }
}

}  // namespace report_detail

void Report::setFixedLines(int lines) {
  using namespace report_detail;
  if (lines <= 0 || template_.page.roll || template_.page.columns > 1) return;
  fixedLines_ = lines;
  double row = 0;
  for (Band& band : template_.bands) {
    if (band.kind == BandKind::MasterData) row += band.height;
    for (Item& item : band.items) {
      if (item.kind != ItemKind::Text) continue;
      item.wrap = item.wrap || item.grow;
      item.grow = false;
      item.shrink = true;
    }
  }
  const double share = row > 0 ? roomForRows(template_) / (lines * row) : 1;
  if (share < 1 && row * share >= kLowestRow && !template_.page.preprinted) lowerRows(template_, share);
}

Pages Report::prepare() const {
  int guess = 1;
  std::shared_ptr<Pages::Data> data;
  // "第1页 共3页" between the rows is known when all pages are; a longer number may need one page more.
  for (int attempt = 0; attempt < 3; ++attempt) {
    Layout layout(*this, guess);
    data = layout.run();
    const int count = static_cast<int>(data->sheets.size());
    if (!layout.usesPages() || count == guess) break;
    guess = count;
  }
  return Pages(data);
}

Report sampleReport(const Template& t, int rowCount) {
  Report report(t);
  for (const Variable& variable : t.variables) {
    if (!variable.sample.isEmpty()) report.setVariable(variable.name, variable.sample);
  }
  std::vector<std::string> columns;
  for (const DetailField& field : t.fields)
    columns.push_back(field.name.toStdString());
  if (columns.empty()) columns.emplace_back("sample");
  RowSet rows(columns);
  for (int row = 0; row < rowCount; ++row) {
    if (t.fields.empty()) rows.addInteger(row + 1);
    for (const DetailField& field : t.fields) {
      // As a query gives it: figures as numbers, codes with a zero in front as text.
      bool isNumber = false;
      const double number = field.sample.toDouble(&isNumber);
      if (isNumber && numberText(number) == field.sample)
        rows.addReal(number);
      else
        rows.addText(field.sample.toStdString());
    }
  }
  report.setRows(std::move(rows));
  return report;
}

}  // namespace jxc::report
