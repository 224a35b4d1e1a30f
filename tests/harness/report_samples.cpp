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
  using namespace report;
  using namespace report_samples_detail;
  Template t;
  t.title = u"销售单"_qs;
  t.variables = {{u"comName"_qs, u"公司"_qs, {}, u"'明视眼镜'"_qs},
                 {u"khName"_qs, u"客户"_qs, {}, u"'张三'"_qs},
                 {u"jhDate"_qs, u"日期"_qs, {}, u"'2026-05-03'"_qs},
                 {u"yf"_qs, u"大写"_qs, {}, {}}};
  Band& title = addBand(t, BandKind::ReportTitle, 24);
  title.items.push_back(sized(textItem(0, 0, 190, 10, u"[comName]销售单"_qs, HAlign::Center), 18, true));
  title.items.push_back(textItem(0, 13, 90, 6, u"客户：[khName]"_qs));
  Item date = textItem(130, 13, 60, 6, u"日期：[jhDate]"_qs, HAlign::Right);
  date.format = u"yyyy年m月d日"_qs;
  title.items.push_back(date);
  addGrid(t,
          {{12, u"序号", u"[Line]", HAlign::Center},
           {70, u"品名", u"[g_name]", HAlign::Left},
           {14, u"单位", u"[dw_name]", HAlign::Center},
           {24, u"数量", u"[ls_sl]", HAlign::Right},
           {30, u"单价", u"[ls_dj]", HAlign::Right, u"#,##0.00"},
           {40, u"金额", u"[je]", HAlign::Right, u"#,##0.00"}},
          7);
  Band& summary = addBand(t, BandKind::Summary, 24);
  summary.items = {textItem(0, 0, 96, 7, u"合计：[yf]"_qs), textItem(96, 0, 24, 7, u"[Sum(ls_sl)]"_qs, HAlign::Right),
                   textItem(120, 0, 70, 7, u"[Sum(je)]"_qs, HAlign::Right)};
  for (Item& item : summary.items)
    item.frame = side::all;
  summary.items.back().format = u"￥#,##0.00"_qs;
  for (const Item& item : {textItem(0, 12, 60, 6, u"制单：[aName]"_qs), textItem(100, 12, 90, 6, u"客户签字："_qs),
                           lineItem(118, 18, 60, 0)})
    summary.items.push_back(item);
  Band& footer = addBand(t, BandKind::PageFooter, 6);
  footer.items.push_back(textItem(0, 0, 190, 6, u"第[Page]页 共[Pages]页"_qs, HAlign::Center));
  return t;
}

report::Template halfFormTemplate() {
  using namespace report;
  using namespace report_samples_detail;
  Template t = saleTemplate();
  for (const Paper& paper : papers()) {
    if (paper.width == 241 && paper.height == 139.7) usePaper(t.page, paper);
  }
  t.bands.back().items.push_back(textItem(0, 0, 80, 6, u"本页小计：[Sum(je)] 累计：[Sum(je,'running')]"_qs));
  Band& overlay = addBand(t, BandKind::Overlay, 127);
  Item stamp = sized(textItem(150, 20, 50, 12, u"第一联 存根"_qs, HAlign::Center), 14, true);
  stamp.background = true;
  stamp.font.colour = QColor(0xCC, 0x88, 0x88);
  overlay.items.push_back(stamp);
  Item side = textItem(203, 20, 6, 60, u"白联存根 红联客户"_qs, HAlign::Center);
  side.rotation = 90;
  overlay.items.push_back(side);
  return t;
}

report::Template slipTemplate() {
  using namespace report;
  using namespace report_samples_detail;
  Template t;
  t.title = u"小票"_qs;
  usePaper(t.page, papers().back());
  Band& title = addBand(t, BandKind::ReportTitle, 16);
  title.items.push_back(sized(textItem(0, 0, 52, 7, u"[comName]"_qs, HAlign::Center), 12, true));
  title.items.push_back(textItem(0, 8, 52, 5, u"单号：[djh]"_qs));
  Item rule = lineItem(0, 15, 52, 0);
  rule.pen.style = PenStyle::Dash;
  title.items.push_back(rule);
  Band& row = addBand(t, BandKind::MasterData, 10);
  Item name = textItem(0, 0, 52, 5, u"[g_name]"_qs);
  name.grow = true;
  row.items.push_back(name);
  row.items.push_back(textItem(4, 5, 26, 5, u"[ls_sl] × [ls_dj]"_qs));
  Item amount = textItem(30, 5, 22, 5, u"[je]"_qs, HAlign::Right);
  amount.format = u"0.00"_qs;
  row.items.push_back(amount);
  Band& summary = addBand(t, BandKind::Summary, 36);
  summary.items.push_back(rule);
  summary.items.back().y = 1;
  Item sum = sized(textItem(0, 2, 52, 6, u"合计 [Sum(je)]"_qs, HAlign::Right), 11, true);
  sum.format = u"￥0.00"_qs;
  summary.items.push_back(sum);
  summary.items.push_back(barcodeItem(14, 10, 24, 24, u"[djh]"_qs, Symbology::Qr));
  Band& footer = addBand(t, BandKind::PageFooter, 5);
  footer.items.push_back(textItem(0, 0, 52, 5, u"谢谢惠顾"_qs, HAlign::Spread));
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
