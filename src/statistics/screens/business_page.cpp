#include "statistics/screens/business_page.h"

#include "core/clock.h"
#include "core/fillers.h"
#include "core/text.h"
#include "engine/error.h"
#include "ui/display.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QTimer>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

namespace jxc {
namespace business_page_detail {

using business_page::columns;
using ui::ColumnKind;
using ui::ColumnSpec;

/// One line of a block: what it is, and the columns of its figures; empty where it has none.
struct Line {
  std::string_view caption, documents, pieces, yuan;
};
struct Block {
  std::string_view title;
  std::span<const Line> lines;
  int row, column;
};
constexpr Line kPurchases[] = {
    {"采购进货", "cgds", "cgsl", "cgje"}, {"采购退货", "ctds", "ctsl", "ctje"}, {"合计", "", "cghjsl", "cghjje"}};
constexpr Line kSales[] = {
    {"商品销售", "xsds", "xssl", "xsje"}, {"顾客退货", "xtds", "xtsl", "xtje"}, {"合计", "", "xshjsl", "xshjje"}};
constexpr Line kStock[] = {{"现有库存", "", "kcsl", "kcje"}};
constexpr Line kMoved[] = {
    {"库存调拨", "dbds", "dbsl", ""}, {"商品报损", "bsds", "bssl", "bsje"}, {"商品报溢", "byds", "bysl", "byje"}};
constexpr Line kPaid[] = {
    {"向供货商付款单数", "fkds", "", "fkje"}, {"应付供货商", "", "", "yfje"}, {"实付供货商", "", "", "sfje"}};
constexpr Line kReceived[] = {
    {"向客户收款单数", "skds", "", "skje"}, {"应收客户", "", "", "ysje"}, {"实收客户", "", "", "ssje"}};
constexpr Line kFinance[] = {
    {"销售成本", "", "", "xscb"}, {"销售毛利", "", "", "xslr"}, {"销售毛利率：", "", "", "lrl"}};
constexpr Block kBlocks[] = {{"采购", kPurchases, 0, 0},
                             {"销售", kSales, 0, 1},
                             {"调拨和损溢", kMoved, 1, 0},
                             {"财务：毛利率(含税)", kFinance, 1, 1},
                             {"供货商往来", kPaid, 2, 0},
                             {"客户往来", kReceived, 2, 1},
                             {"库存（现在的库存，与时间段无关）", kStock, 3, 0}};
constexpr int kFigures = 3;
constexpr std::string_view kHeadings[kFigures] = {"单据数", "数量", "金额"};

const ColumnSpec* columnOf(std::string_view field) {
  const auto found = std::ranges::find(columns, field, &ColumnSpec::field);
  return found == columns.end() ? nullptr : &*found;
}

/// A figure as the page says it: with what it counts behind it.
QString told(const ColumnSpec& column, double value) {
  if (column.kind == ColumnKind::Percent) return QString::number(value, 'f', 2) + u'%';
  QString text = ui::displayNumber(column.kind, value);
  if (text.isEmpty()) text = QStringLiteral("0");
  return column.kind == ColumnKind::Total ? text + QStringLiteral("元") : text;
}

/// Nothing where the operator has no right to the column: then it is not among those of the row.
std::optional<double> valueOf(const Row& row, std::string_view field) {
  try {
    return row.number(field);
  } catch (const DbError&) {
    return {};
  }
}

class BusinessPage : public ui::RowPane {
 public:
  BusinessPage() {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    asked_ = new QLabel;
    asked_->setObjectName(QStringLiteral("lPeriod"));
    asked_->setProperty("title", true);
    now_ = new QLabel;
    now_->setObjectName(QStringLiteral("lNow"));
    now_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* head = new QHBoxLayout;
    head->addWidget(asked_, 1);
    head->addWidget(now_);
    all->addLayout(head);
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setAccessibleName(QStringLiteral("综合分析"));
    auto* area = new QWidget;
    auto* raster = new QGridLayout(area);
    raster->setContentsMargins(0, 0, 6, 0);
    for (const Block& block : kBlocks)
      raster->addWidget(makeBlock(block), block.row, block.column);
    raster->setRowStretch(std::end(kBlocks)[-1].row + 1, 1);
    scroll->setWidget(area);
    all->addWidget(scroll, 1);
    setFocusProxy(scroll);
    clock_.setInterval(1000);
    connect(&clock_, &QTimer::timeout, this, [this] { tellTime(); });
    tellTime();
  }

  void show(const Row* row, const Criteria& criteria) override {
    const QString period = criteria.from > criteria.to ? QStringLiteral("%1 至 %2：起始日期晚于截止日期，请改正")
                                                       : QStringLiteral("%1 至 %2");
    QString where = QStringLiteral("所有仓库");
    for (const ListItem& each : fillSeenWarehouses())
      if (each.key == criteria.warehouse) where = each.text;
    asked_->setText(period.arg(criteria.from, criteria.to) + u'　' + where);
    for (const Figure& figure : figures_) {
      const auto value = row ? valueOf(*row, figure.column->field) : std::nullopt;
      const QString text = value ? told(*figure.column, *value) : QString();
      figure.label->setText(text);
      figure.label->setAccessibleName(value ? figure.name + u' ' + text : QString());
    }
    tellTime();
  }

  std::optional<Sheet> sheet() const override {
    std::vector<std::vector<Value>> rows;
    for (const Block& block : kBlocks)
      for (const Line& line : block.lines) {
        std::vector<Value> cells{ui::qs(block.title), ui::qs(line.caption)};
        for (const std::string_view field : {line.documents, line.pieces, line.yuan}) {
          const auto found = std::ranges::find_if(figures_, [&](const Figure& f) { return f.column->field == field; });
          cells.emplace_back(field.empty() || found == figures_.end() ? QString() : found->label->text());
        }
        rows.push_back(std::move(cells));
      }
    Sheet sheet;
    for (const char16_t* caption : {u"板块", u"项目", u"单据数", u"数量", u"金额"})
      sheet.columns.push_back({.caption = QString::fromUtf16(caption), .kind = SheetKind::AsIs});
    sheet.rows = heldRows(std::move(rows));
    sheet.notes = {asked_->text(), now_->text()};
    return sheet;
  }

 protected:
  void showEvent(QShowEvent* event) override {
    RowPane::showEvent(event);
    tellTime();
    clock_.start();
  }
  void hideEvent(QHideEvent* event) override {
    clock_.stop();
    RowPane::hideEvent(event);
  }

 private:
  struct Figure {
    const ColumnSpec* column;
    QLabel* label;
    QString name;
  };

  QWidget* makeBlock(const Block& block) {
    auto* frame = new QGroupBox(ui::qs(block.title));
    auto* raster = new QGridLayout(frame);
    raster->setHorizontalSpacing(12);
    raster->setColumnStretch(0, 1);
    const auto put = [&](QLabel* label, int row, int column) {
      label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
      raster->addWidget(label, row, column);
    };
    int row = 1;
    std::array<bool, kFigures> used{};
    for (const Line& line : block.lines) {
      raster->addWidget(new QLabel(ui::qs(line.caption)), row, 0);
      const std::array fields{line.documents, line.pieces, line.yuan};
      for (std::size_t i = 0; i < fields.size(); ++i) {
        const ColumnSpec* column = columnOf(fields[i]);
        if (!column) continue;
        used[i] = true;
        auto* label = new QLabel;
        label->setObjectName(u"l_"_qs + ui::qs(column->field));
        // Figures of all blocks stand below each other.
        constexpr std::array<const char16_t*, kFigures> kWidest{u"单据数", u"-000,000.00", u"-00,000,000.00元"};
        label->setMinimumWidth(fontMetrics().horizontalAdvance(QString::fromUtf16(kWidest[i])));
        put(label, row, static_cast<int>(i) + 1);
        figures_.push_back({column, label, ui::qs(line.caption) + ui::qs(kHeadings[i])});
      }
      ++row;
    }
    for (std::size_t i = 0; i < used.size(); ++i) {
      if (!used[i]) continue;
      auto* heading = new QLabel(ui::qs(kHeadings[i]));
      heading->setProperty("explanation", true);
      put(heading, 0, static_cast<int>(i) + 1);
    }
    return frame;
  }

  void tellTime() { now_->setText(clock::stamp() + u' ' + weekdayName().trimmed()); }

  QLabel* asked_;
  QLabel* now_;
  std::vector<Figure> figures_;
  QTimer clock_;
};

}  // namespace business_page_detail

ui::RowPane* makeBusinessPage() {
  return new business_page_detail::BusinessPage;
}

}  // namespace jxc
