#include "statistics/screens/day_board.h"

#include "core/clock.h"
#include "core/rights.h"
#include "core/rounding.h"
#include "core/screens/command_runner.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/screens/partner_text.h"
#include "statistics/business_day.h"
#include "ui/display.h"
#include "ui/skin.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace jxc {
namespace day_board_detail {

constexpr std::string_view kAnalysis = "btn_Menu4_BtnA";

/// What a row of `dayFigures` is on the board: its amount for who has the right, how many documents and pieces for all.
struct Kind {
  std::string_view what, caption, command;
  Right right;
  std::string_view unit = {};  // of the count
  bool hasAmount = true;
  bool hidesWithout = false;  // nothing but the amount: without the right it is not there
};
constexpr Kind kKinds[] = {
    {"xs", "今日销售", "btn_Menu2_Btn6", kSeesPrice, "单"},
    {"xt", "今日顾客退货", "btn_Menu2_Btn6", kSeesPrice, "单"},
    {.what = "lr", .caption = "今日毛利", .command = kAnalysis, .right = kSeesProfit, .hidesWithout = true},
    {.what = "zj", .caption = "今日收支：", .command = "btn_Menu5_Right2", .right = {}},
    {.what = "ds", .caption = "待审核单据", .command = "btn_Djcx", .right = {}, .unit = "张", .hasAmount = false},
    {.what = "bj",
     .caption = "低于库存下限",
     .command = "btn_Menu3_Btn6",
     .right = {},
     .unit = "种",
     .hasAmount = false},
    {.what = "ys",
     .caption = "客户欠款",
     .command = "btn_Menu8_Btn3",
     .right = seesMoney<PartnerType::Customer>,
     .hidesWithout = true},
    {.what = "yf",
     .caption = "欠供货商",
     .command = "btn_Menu8_Btn6",
     .right = seesMoney<PartnerType::Supplier>,
     .hidesWithout = true},
};

QString pieces(double quantity) {
  return numberText(roundEps(quantity, quantityDigits())) + u"件"_qs;
}

/// What a figure says: the amount, and below it what it is made of; without the amount that alone.
std::pair<QString, QString> said(const Kind& kind, const Row& row, bool seesAmount) {
  const QString count = kind.unit.empty() ? QString() : QString::number(row.integer("ds")) + ui::qs(kind.unit);
  if (!kind.hasAmount) return {count, {}};
  const QString parts = kind.unit.empty() ? QString() : count + u'　' + pieces(row.number("sl"));
  if (!seesAmount) return {count, pieces(row.number("sl"))};
  return {ui::displayNumber(ui::ColumnKind::Money, row.number("je")), parts};
}

}  // namespace day_board_detail

/// One figure: what it is, the figure, and what it is made of.
class DayBoard::Figure : public QToolButton {
 public:
  Figure(QWidget* parent, QString caption, QString value, QString parts)
      : QToolButton(parent), caption_(std::move(caption)), value_(std::move(value)), parts_(std::move(parts)) {
    setProperty("tile", true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("%1 %2").arg(caption_, value_) + (parts_.isEmpty() ? QString() : u'，' + parts_));
    setToolTip(accessibleName());
  }
  QSize sizeHint() const override {
    const QFontMetrics value(valueFont());
    const int wide = std::max({value.horizontalAdvance(value_), fontMetrics().horizontalAdvance(caption_),
                               fontMetrics().horizontalAdvance(parts_)});
    return {wide + 2 * kPad, fontMetrics().height() * 2 + value.height() + kPad};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QToolButton::paintEvent(event);
    QPainter painter(this);
    const QRect inside = rect().adjusted(kPad, kPad / 2, -kPad, -kPad / 2);
    painter.setPen(ui::skinColour(QStringLiteral("muted")));
    painter.drawText(inside, Qt::AlignTop | Qt::AlignLeft,
                     fontMetrics().elidedText(caption_, Qt::ElideMiddle, inside.width()));
    painter.drawText(inside, Qt::AlignBottom | Qt::AlignLeft, parts_);
    painter.setFont(valueFont());
    painter.setPen(ui::skinColour(value_.startsWith(u'-') ? QStringLiteral("bad") : QStringLiteral("text")));
    QRect middle = inside;
    middle.setTop(inside.top() + fontMetrics().height());
    middle.setHeight(QFontMetrics(valueFont()).height());
    painter.drawText(middle, Qt::AlignVCenter | Qt::AlignLeft, value_);
  }

 private:
  static constexpr int kPad = 12;
  QFont valueFont() const {
    constexpr double kLarger = 1.35;
    QFont larger = font();
    larger.setPixelSize(static_cast<int>(QFontInfo(larger).pixelSize() * kLarger));
    return larger;
  }
  QString caption_, value_, parts_;
};

DayBoard::DayBoard(QWidget* parent, std::function<void(std::string_view)> run)
    : QWidget(parent), run_(std::move(run)), loader_(this) {
  setObjectName(QStringLiteral("dayBoard"));
  setAccessibleName(QStringLiteral("今日情况"));
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(3, 6, 12, 0);
  all->setSpacing(6);
  title_ = new QLabel(this);
  title_->setProperty("heading", true);
  all->addWidget(title_);
  raster_ = new QGridLayout;
  raster_->setSpacing(10);
  all->addLayout(raster_);
}

DayBoard::~DayBoard() = default;

void DayBoard::refresh() {
  const QString today = clock::today();
  if (std::exchange(operator_, session().a_sn) != session().a_sn) show(RowSet({"what"}));  // not another one's
  const auto* analysis = ui::findCommand(day_board_detail::kAnalysis);
  if (!isAllowed(*analysis)) {
    loader_.cancel();
    return show(RowSet({"what"}));
  }
  const Criteria criteria{.from = today, .to = today};
  const Source source(dayFigures);
  loader_.load(
      source.ask(criteria), [this](const RowSet& rows, bool) { show(rows); },
      [this](const std::exception_ptr&) { tellFailure(); });
}

// The window is there for its commands: no message stands in their way, and whoever opens a screen is told more there.
void DayBoard::tellFailure() {
  show(RowSet({"what"}));
  failed_ = true;
  title_->setText(QStringLiteral("今日情况读取失败"));
  title_->show();
  if (shown_) shown_();
}

void DayBoard::stop() {
  loader_.cancel();
}

void DayBoard::waitLoaded(int milliseconds) {
  loader_.waitFor(milliseconds);
}

void DayBoard::show(const RowSet& rows) {
  using namespace day_board_detail;
  // Who was on a figure stays on the one in its place.
  // The window may not be active again yet, when a screen above it has just been closed.
  const auto focused =
      std::ranges::find_if(figures_, [this](const Figure* each) { return each == window()->focusWidget(); });
  const auto place = focused == figures_.end() ? -1 : focused - figures_.begin();
  // One of them may have opened the screen that has just been left: it goes when its click is over.
  for (Figure* each : figures_) {
    raster_->removeWidget(each);
    each->hide();
    each->setObjectName({});
    each->deleteLater();
  }
  figures_.clear();
  failed_ = false;
  title_->setText(u"今日 "_qs + clock::today() + u' ' + weekdayName().trimmed());
  for (const Row row : rows) {
    const Kind& kind = *std::ranges::find(kKinds, row.text("what").toStdString(), &Kind::what);
    const auto* command = ui::findCommand(kind.command);
    const bool seesAmount = hasRight(kind.right);
    if (!isAllowed(*command) || !isShown(*command) || (kind.hidesWithout && !seesAmount)) continue;
    const auto [value, parts] = said(kind, row, seesAmount);
    auto* figure = new Figure(this, ui::qs(kind.caption) + row.text("name"), value, parts);
    figure->setObjectName(u"day_"_qs + ui::qs(kind.what) + row.text("name"));
    connect(figure, &QToolButton::clicked, this, [this, command] { run_(command->name); });
    figures_.push_back(figure);
  }
  title_->setVisible(!figures_.empty());
  if (shown_) shown_();
  // When it is seen: a window that is not active would forget that a hidden one is to have the keys.
  if (place >= 0 && !figures_.empty())
    figures_[static_cast<std::size_t>(std::min<std::ptrdiff_t>(place, std::ssize(figures_) - 1))]->setFocus();
}

int DayBoard::arrangeIn(int width) {
  int widest = 1;
  for (const Figure* each : figures_)
    widest = std::max(widest, each->sizeHint().width());
  const QMargins around = layout()->contentsMargins();
  const int room = width - around.left() - around.right() + raster_->spacing();
  columns_ = std::clamp(room / (widest + raster_->spacing()), 1, std::max(1, static_cast<int>(figures_.size())));
  for (std::size_t i = 0; i < figures_.size(); ++i) {
    const int at = static_cast<int>(i);
    raster_->addWidget(figures_[i], at / columns_, at % columns_);
    figures_[i]->QWidget::show();
  }
  layout()->invalidate();
  return layout()->sizeHint().height();
}

void DayBoard::focusFirst() {
  if (!figures_.empty()) figures_.front()->setFocus(Qt::TabFocusReason);
}

bool DayBoard::moveFocus(int key) {
  const auto now = std::ranges::find(figures_, window()->focusWidget());
  if (now == figures_.end()) return false;
  const auto step = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : key == Qt::Key_Up ? -columns_ : columns_;
  const auto place = now - figures_.begin() + step;
  if (place < 0) return key != Qt::Key_Up;
  if (place < std::ssize(figures_)) figures_[static_cast<std::size_t>(place)]->setFocus(Qt::TabFocusReason);
  return true;
}

}  // namespace jxc
