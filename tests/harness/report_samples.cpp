#include "harness/report_samples.h"

#include "engine/number_text.h"
#include "harness/gui.h"

namespace jxc::test {

using namespace report;

namespace report_samples_detail {

struct Cell {
  double width;
  const char16_t* caption;
  const char16_t* content;
  HAlign align;
  const char16_t* format = u"";
};

/// A row of captions and a row of cells under them, framed.
void addGrid(Template& t, std::initializer_list<Cell> cells, double height) {
  Band captions, row;
  captions.kind = BandKind::ColumnHeader;
  row.kind = BandKind::MasterData;
  captions.height = row.height = height;
  double x = 0;
  for (const Cell& cell : cells) {
    Item caption = textItem(x, 0, cell.width, height, QString::fromUtf16(cell.caption), HAlign::Center);
    caption.font.bold = true;
    caption.frame = side::all;
    caption.fill = QColor(0xEE, 0xF1, 0xF4);
    caption.background = true;
    captions.items.push_back(caption);
    Item item = textItem(x, 0, cell.width, height, QString::fromUtf16(cell.content), cell.align);
    item.name = QString::fromUtf16(cell.caption);
    item.frame = side::all;
    item.followHeight = true;
    item.format = QString::fromUtf16(cell.format);
    item.grow = cell.align == HAlign::Left;
    row.items.push_back(item);
    x += cell.width;
  }
  t.bands.push_back(captions);
  t.bands.push_back(row);
}

Item sized(Item item, double size, bool bold = false) {
  item.font.size = size;
  item.font.bold = bold;
  return item;
}

}  // namespace report_samples_detail

using report_samples_detail::sized;

Template saleTemplate() {
  Template t;
  t.title = QStringLiteral("销售单");
  t.variables = {{QStringLiteral("comName"), QStringLiteral("公司"), {}, QStringLiteral("'明视眼镜'")},
                 {QStringLiteral("khName"), QStringLiteral("客户"), {}, QStringLiteral("'张三'")},
                 {QStringLiteral("jhDate"), QStringLiteral("日期"), {}, QStringLiteral("'2026-05-03'")},
                 {QStringLiteral("yf"), QStringLiteral("大写"), {}, {}}};
  Band& title = addBand(t, BandKind::ReportTitle, 24);
  title.items.push_back(sized(textItem(0, 0, 190, 10, QStringLiteral("[comName]销售单"), HAlign::Center), 18, true));
  title.items.push_back(textItem(0, 13, 90, 6, QStringLiteral("客户：[khName]")));
  Item date = textItem(130, 13, 60, 6, QStringLiteral("日期：[jhDate]"), HAlign::Right);
  date.format = QStringLiteral("yyyy年m月d日");
  title.items.push_back(date);
  report_samples_detail::addGrid(t,
                                 {{12, u"序号", u"[Line]", HAlign::Center},
                                  {70, u"品名", u"[g_name]", HAlign::Left},
                                  {14, u"单位", u"[dw_name]", HAlign::Center},
                                  {24, u"数量", u"[ls_sl]", HAlign::Right},
                                  {30, u"单价", u"[ls_dj]", HAlign::Right, u"#,##0.00"},
                                  {40, u"金额", u"[je]", HAlign::Right, u"#,##0.00"}},
                                 7);
  Band& summary = addBand(t, BandKind::Summary, 24);
  Item total = textItem(0, 0, 96, 7, QStringLiteral("合计：[yf]"));
  total.frame = side::all;
  summary.items.push_back(total);
  Item quantity = textItem(96, 0, 24, 7, QStringLiteral("[Sum(ls_sl)]"), HAlign::Right);
  quantity.frame = side::all;
  summary.items.push_back(quantity);
  Item sum = textItem(120, 0, 70, 7, QStringLiteral("[Sum(je)]"), HAlign::Right);
  sum.frame = side::all;
  sum.format = QStringLiteral("￥#,##0.00");
  summary.items.push_back(sum);
  summary.items.push_back(textItem(0, 12, 60, 6, QStringLiteral("制单：[aName]")));
  summary.items.push_back(textItem(100, 12, 90, 6, QStringLiteral("客户签字：")));
  summary.items.push_back(lineItem(118, 18, 60, 0));
  Band& footer = addBand(t, BandKind::PageFooter, 6);
  footer.items.push_back(textItem(0, 0, 190, 6, QStringLiteral("第[Page]页 共[Pages]页"), HAlign::Center));
  return t;
}

Template halfFormTemplate() {
  Template t = saleTemplate();
  for (const Paper& paper : papers()) {
    if (paper.width == 241 && paper.height == 139.7) usePaper(t.page, paper);
  }
  t.bands.back().items.push_back(
      textItem(0, 0, 80, 6, QStringLiteral("本页小计：[Sum(je)] 累计：[Sum(je,'running')]")));
  Band& overlay = addBand(t, BandKind::Overlay, 127);
  Item stamp = sized(textItem(150, 20, 50, 12, QStringLiteral("第一联 存根"), HAlign::Center), 14, true);
  stamp.background = true;
  stamp.font.colour = QColor(0xCC, 0x88, 0x88);
  overlay.items.push_back(stamp);
  Item side = textItem(203, 20, 6, 60, QStringLiteral("白联存根 红联客户"), HAlign::Center);
  side.rotation = 90;
  overlay.items.push_back(side);
  return t;
}

Template slipTemplate() {
  Template t;
  t.title = QStringLiteral("小票");
  usePaper(t.page, papers().back());
  Band& title = addBand(t, BandKind::ReportTitle, 16);
  title.items.push_back(sized(textItem(0, 0, 52, 7, QStringLiteral("[comName]"), HAlign::Center), 12, true));
  title.items.push_back(textItem(0, 8, 52, 5, QStringLiteral("单号：[djh]")));
  Item rule = lineItem(0, 15, 52, 0);
  rule.pen.style = PenStyle::Dash;
  title.items.push_back(rule);
  Band& row = addBand(t, BandKind::MasterData, 10);
  Item name = textItem(0, 0, 52, 5, QStringLiteral("[g_name]"));
  name.grow = true;
  row.items.push_back(name);
  row.items.push_back(textItem(4, 5, 26, 5, QStringLiteral("[ls_sl] × [ls_dj]")));
  Item amount = textItem(30, 5, 22, 5, QStringLiteral("[je]"), HAlign::Right);
  amount.format = QStringLiteral("0.00");
  row.items.push_back(amount);
  Band& summary = addBand(t, BandKind::Summary, 36);
  summary.items.push_back(rule);
  summary.items.back().y = 1;
  Item sum = sized(textItem(0, 2, 52, 6, QStringLiteral("合计 [Sum(je)]"), HAlign::Right), 11, true);
  sum.format = QStringLiteral("￥0.00");
  summary.items.push_back(sum);
  summary.items.push_back(barcodeItem(14, 10, 24, 24, QStringLiteral("[djh]"), Symbology::Qr));
  Band& footer = addBand(t, BandKind::PageFooter, 5);
  footer.items.push_back(textItem(0, 0, 52, 5, QStringLiteral("谢谢惠顾"), HAlign::Spread));
  return t;
}

Template labelTemplate() {
  Template t;
  t.title = QStringLiteral("标签");
  t.page.columns = 3;
  t.page.columnGap = 2;
  t.page.flow = Flow::Across;
  Band& row = addBand(t, BandKind::MasterData, 34);
  Item frame = shapeItem(0, 0, 62, 32, ShapeKind::RoundedRectangle);
  frame.pen.colour = QColor(0x99, 0x99, 0x99);
  row.items.push_back(frame);
  Item name = textItem(2, 1, 58, 9, QStringLiteral("[g_name]"));
  name.wrap = true;
  name.shrink = true;
  row.items.push_back(name);
  row.items.push_back(barcodeItem(2, 11, 38, 19, QStringLiteral("[g_sptm]"), Symbology::Ean13));
  Item price = sized(textItem(40, 20, 21, 8, QStringLiteral("[ls_dj]"), HAlign::Right), 14, true);
  price.format = QStringLiteral("￥0.00");
  row.items.push_back(price);
  return t;
}

Template groupTemplate() {
  Template t;
  t.title = QStringLiteral("分类汇总");
  t.groups = {{QStringLiteral("gc_name"), false, false, true}};
  addBand(t, BandKind::GroupHeader, 8).items.push_back(textItem(0, 0, 190, 8, QStringLiteral("类别：[gc_name]")));
  Band& row = addBand(t, BandKind::MasterData, 6);
  row.items.push_back(textItem(0, 0, 12, 6, QStringLiteral("[GroupLine]")));
  row.items.push_back(textItem(12, 0, 100, 6, QStringLiteral("[g_name]")));
  row.items.push_back(textItem(150, 0, 40, 6, QStringLiteral("[je]"), HAlign::Right));
  Band& footer = addBand(t, BandKind::GroupFooter, 7);
  footer.items.push_back(textItem(
      0, 0, 190, 7, QStringLiteral("小计 [gc_name] [count(*)]行 [Sum(je)] 最大[Max(je)] 均[round(Avg(je),2)]")));
  addBand(t, BandKind::Summary, 8).items.push_back(textItem(0, 0, 190, 8, QStringLiteral("总计 [Sum(je)]")));
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

Report saleReport(Template t, int rows) {
  needGui();
  Report report(std::move(t));
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

QStringList linesOf(const Pages& pages) {
  QStringList lines;
  for (int page = 0; page < pages.count(); ++page)
    lines << pages.lines(page);
  return lines;
}

}  // namespace jxc::test
