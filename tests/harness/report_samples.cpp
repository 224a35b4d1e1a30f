#include "harness/report_samples.h"

#include "engine/number_text.h"
#include "harness/gui.h"

namespace jxc::test {

namespace report_samples_detail {

struct Cell {
  double width;
  const char16_t* caption;
  const char16_t* content;
  report::HAlign align;
  const char16_t* format = u"";
};

/// A row of captions and a row of cells under them, framed.
void addGrid(report::Template& t, std::initializer_list<Cell> cells, double height) {
  report::Band captions, row;
  captions.kind = report::BandKind::ColumnHeader;
  row.kind = report::BandKind::MasterData;
  captions.height = row.height = height;
  double x = 0;
  for (const Cell& cell : cells) {
    report::Item caption =
        report::textItem(x, 0, cell.width, height, QString::fromUtf16(cell.caption), report::HAlign::Center);
    caption.font.bold = true;
    caption.frame = report::side::all;
    caption.fill = QColor(0xEE, 0xF1, 0xF4);
    caption.background = true;
    captions.items.push_back(caption);
    report::Item item = report::textItem(x, 0, cell.width, height, QString::fromUtf16(cell.content), cell.align);
    item.name = QString::fromUtf16(cell.caption);
    item.frame = report::side::all;
    item.followHeight = true;
    item.format = QString::fromUtf16(cell.format);
    item.grow = cell.align == report::HAlign::Left;
    row.items.push_back(item);
    x += cell.width;
  }
  t.bands.push_back(captions);
  t.bands.push_back(row);
}

report::Item sized(report::Item item, double size, bool bold = false) {
  item.font.size = size;
  item.font.bold = bold;
  return item;
}

}  // namespace report_samples_detail

report::Template saleTemplate() {
  report::Template t;
  t.title = QStringLiteral("销售单");
  t.variables = {{QStringLiteral("comName"), QStringLiteral("公司"), {}, QStringLiteral("'明视眼镜'")},
                 {QStringLiteral("khName"), QStringLiteral("客户"), {}, QStringLiteral("'张三'")},
                 {QStringLiteral("jhDate"), QStringLiteral("日期"), {}, QStringLiteral("'2026-05-03'")},
                 {QStringLiteral("yf"), QStringLiteral("大写"), {}, {}}};
  report::Band& title = addBand(t, report::BandKind::ReportTitle, 24);
  title.items.push_back(report_samples_detail::sized(
      report::textItem(0, 0, 190, 10, QStringLiteral("[comName]销售单"), report::HAlign::Center), 18, true));
  title.items.push_back(report::textItem(0, 13, 90, 6, QStringLiteral("客户：[khName]")));
  report::Item date = report::textItem(130, 13, 60, 6, QStringLiteral("日期：[jhDate]"), report::HAlign::Right);
  date.format = QStringLiteral("yyyy年m月d日");
  title.items.push_back(date);
  report_samples_detail::addGrid(t,
                                 {{12, u"序号", u"[Line]", report::HAlign::Center},
                                  {70, u"品名", u"[g_name]", report::HAlign::Left},
                                  {14, u"单位", u"[dw_name]", report::HAlign::Center},
                                  {24, u"数量", u"[ls_sl]", report::HAlign::Right},
                                  {30, u"单价", u"[ls_dj]", report::HAlign::Right, u"#,##0.00"},
                                  {40, u"金额", u"[je]", report::HAlign::Right, u"#,##0.00"}},
                                 7);
  report::Band& summary = addBand(t, report::BandKind::Summary, 24);
  report::Item total = report::textItem(0, 0, 96, 7, QStringLiteral("合计：[yf]"));
  total.frame = report::side::all;
  summary.items.push_back(total);
  report::Item quantity = report::textItem(96, 0, 24, 7, QStringLiteral("[Sum(ls_sl)]"), report::HAlign::Right);
  quantity.frame = report::side::all;
  summary.items.push_back(quantity);
  report::Item sum = report::textItem(120, 0, 70, 7, QStringLiteral("[Sum(je)]"), report::HAlign::Right);
  sum.frame = report::side::all;
  sum.format = QStringLiteral("￥#,##0.00");
  summary.items.push_back(sum);
  summary.items.push_back(report::textItem(0, 12, 60, 6, QStringLiteral("制单：[aName]")));
  summary.items.push_back(report::textItem(100, 12, 90, 6, QStringLiteral("客户签字：")));
  summary.items.push_back(report::lineItem(118, 18, 60, 0));
  report::Band& footer = addBand(t, report::BandKind::PageFooter, 6);
  footer.items.push_back(
      report::textItem(0, 0, 190, 6, QStringLiteral("第[Page]页 共[Pages]页"), report::HAlign::Center));
  return t;
}

report::Template halfFormTemplate() {
  report::Template t = saleTemplate();
  for (const report::Paper& paper : report::papers()) {
    if (paper.width == 241 && paper.height == 139.7) usePaper(t.page, paper);
  }
  t.bands.back().items.push_back(
      report::textItem(0, 0, 80, 6, QStringLiteral("本页小计：[Sum(je)] 累计：[Sum(je,'running')]")));
  report::Band& overlay = addBand(t, report::BandKind::Overlay, 127);
  report::Item stamp = report_samples_detail::sized(
      report::textItem(150, 20, 50, 12, QStringLiteral("第一联 存根"), report::HAlign::Center), 14, true);
  stamp.background = true;
  stamp.font.colour = QColor(0xCC, 0x88, 0x88);
  overlay.items.push_back(stamp);
  report::Item side = report::textItem(203, 20, 6, 60, QStringLiteral("白联存根 红联客户"), report::HAlign::Center);
  side.rotation = 90;
  overlay.items.push_back(side);
  return t;
}

report::Template slipTemplate() {
  report::Template t;
  t.title = QStringLiteral("小票");
  usePaper(t.page, report::papers().back());
  report::Band& title = addBand(t, report::BandKind::ReportTitle, 16);
  title.items.push_back(report_samples_detail::sized(
      report::textItem(0, 0, 52, 7, QStringLiteral("[comName]"), report::HAlign::Center), 12, true));
  title.items.push_back(report::textItem(0, 8, 52, 5, QStringLiteral("单号：[djh]")));
  report::Item rule = report::lineItem(0, 15, 52, 0);
  rule.pen.style = report::PenStyle::Dash;
  title.items.push_back(rule);
  report::Band& row = addBand(t, report::BandKind::MasterData, 10);
  report::Item name = report::textItem(0, 0, 52, 5, QStringLiteral("[g_name]"));
  name.grow = true;
  row.items.push_back(name);
  row.items.push_back(report::textItem(4, 5, 26, 5, QStringLiteral("[ls_sl] × [ls_dj]")));
  report::Item amount = report::textItem(30, 5, 22, 5, QStringLiteral("[je]"), report::HAlign::Right);
  amount.format = QStringLiteral("0.00");
  row.items.push_back(amount);
  report::Band& summary = addBand(t, report::BandKind::Summary, 36);
  summary.items.push_back(rule);
  summary.items.back().y = 1;
  report::Item sum = report_samples_detail::sized(
      report::textItem(0, 2, 52, 6, QStringLiteral("合计 [Sum(je)]"), report::HAlign::Right), 11, true);
  sum.format = QStringLiteral("￥0.00");
  summary.items.push_back(sum);
  summary.items.push_back(report::barcodeItem(14, 10, 24, 24, QStringLiteral("[djh]"), report::Symbology::Qr));
  report::Band& footer = addBand(t, report::BandKind::PageFooter, 5);
  footer.items.push_back(report::textItem(0, 0, 52, 5, QStringLiteral("谢谢惠顾"), report::HAlign::Spread));
  return t;
}

report::Template labelTemplate() {
  report::Template t;
  t.title = QStringLiteral("标签");
  t.page.columns = 3;
  t.page.columnGap = 2;
  t.page.flow = report::Flow::Across;
  report::Band& row = addBand(t, report::BandKind::MasterData, 34);
  report::Item frame = report::shapeItem(0, 0, 62, 32, report::ShapeKind::RoundedRectangle);
  frame.pen.colour = QColor(0x99, 0x99, 0x99);
  row.items.push_back(frame);
  report::Item name = report::textItem(2, 1, 58, 9, QStringLiteral("[g_name]"));
  name.wrap = true;
  name.shrink = true;
  row.items.push_back(name);
  row.items.push_back(report::barcodeItem(2, 11, 38, 19, QStringLiteral("[g_sptm]"), report::Symbology::Ean13));
  report::Item price = report_samples_detail::sized(
      report::textItem(40, 20, 21, 8, QStringLiteral("[ls_dj]"), report::HAlign::Right), 14, true);
  price.format = QStringLiteral("￥0.00");
  row.items.push_back(price);
  return t;
}

report::Template groupTemplate() {
  report::Template t;
  t.title = QStringLiteral("分类汇总");
  t.groups = {{QStringLiteral("gc_name"), false, false, true}};
  addBand(t, report::BandKind::GroupHeader, 8)
      .items.push_back(report::textItem(0, 0, 190, 8, QStringLiteral("类别：[gc_name]")));
  report::Band& row = addBand(t, report::BandKind::MasterData, 6);
  row.items.push_back(report::textItem(0, 0, 12, 6, QStringLiteral("[GroupLine]")));
  row.items.push_back(report::textItem(12, 0, 100, 6, QStringLiteral("[g_name]")));
  row.items.push_back(report::textItem(150, 0, 40, 6, QStringLiteral("[je]"), report::HAlign::Right));
  report::Band& footer = addBand(t, report::BandKind::GroupFooter, 7);
  footer.items.push_back(report::textItem(
      0, 0, 190, 7, QStringLiteral("小计 [gc_name] [count(*)]行 [Sum(je)] 最大[Max(je)] 均[round(Avg(je),2)]")));
  addBand(t, report::BandKind::Summary, 8)
      .items.push_back(report::textItem(0, 0, 190, 8, QStringLiteral("总计 [Sum(je)]")));
  return t;
}

RowSet saleRows(int count) {
  RowSet rows({"g_name", "dw_name", "ls_sl", "ls_dj", "je", "g_sptm", "gc_name"});
  const char* names[] = {"金属全框镜架 TR90 黑色", "1.56 非球面树脂镜片", "隐形眼镜护理液 360ml",
                         "儿童防蓝光眼镜（含盒、布）送螺丝刀与备用鼻托一副，两年内免费调整", "老花镜 +2.00"};
  const char* classes[] = {"镜架", "镜片", "护理"};
  for (int i = 0; i < count; ++i) {
    rows.addText(names[i % 5]);
    rows.addText(i % 2 == 0 ? "副" : "片");
    rows.addInteger(1 + i % 3);
    rows.addReal(99.5 + i % 7);
    rows.addReal((1 + i % 3) * (99.5 + i % 7));
    rows.addText("690123456" + std::to_string(100 + i % 900));
    rows.addText(classes[i * 3 / std::max(1, count)]);
  }
  return rows;
}

report::Report saleReport(report::Template t, int rows) {
  needGui();
  report::Report report(std::move(t));
  report.setText(u"comName", u"明视眼镜");
  report.setText(u"khName", u"张三");
  report.setText(u"jhDate", u"2026-05-03");
  report.setText(u"yf", u"壹佰元整");
  report.setText(u"aName", u"admin");
  report.setText(u"djh", u"XS26050310001");
  report.setRows(saleRows(rows));
  return report;
}

RowSet rowsOf(std::vector<std::string> columns, std::initializer_list<std::initializer_list<const char*>> rows) {
  RowSet set(std::move(columns));
  for (const auto& row : rows) {
    for (const char* cell : row) {
      const auto number = parseNumber(cell);
      if (*cell == '\0')
        set.addNull();
      else if (number)
        set.addReal(*number);
      else
        set.addText(cell);
    }
  }
  return set;
}

QStringList linesOf(const report::Pages& pages) {
  QStringList lines;
  for (int page = 0; page < pages.count(); ++page)
    lines << pages.lines(page);
  return lines;
}

}  // namespace jxc::test
