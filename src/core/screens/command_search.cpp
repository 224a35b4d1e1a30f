#include "core/screens/command_search.h"

#include "core/pinyin.h"
#include "core/screens/command_runner.h"
#include "ui/display.h"
#include "ui/icons.h"
#include "ui/skin.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QToolButton>

#include <algorithm>

namespace jxc {
namespace command_search_detail {

constexpr int kPause = 120;    // ms
constexpr int kLongest = 200;  // letters: a scanner that goes on and on searches nothing

QString captionOf(const ui::CommandDefinition& command) {
  QString caption = ui::qs(command.caption);
  if (const auto bracket = caption.indexOf(QStringLiteral("(&")); bracket >= 0) caption.truncate(bracket);
  return caption;
}

QString placeOf(const ui::CommandDefinition& command) {
  for (const auto& page : ui::pages()) {
    if (page.page == command.page) return ui::qs(page.caption);
  }
  return command.page == ui::Page::Maintenance ? QStringLiteral("系统维护") : QStringLiteral("主窗口");
}

// Initials as they are spoken: the short names of goods and partners take a character's first reading, and nobody says
// 现金银行 or 库存调拨 with that one.
QString spokenInitials(QString caption) {
  return makeJm(caption.replace(u'行', u'航').replace(u'调', u'吊'));
}

// 0 is the best; -1 does not match.
int rank(const ui::CommandDefinition& command, const QString& typed) {
  const QString caption = captionOf(command);
  if (caption.startsWith(typed, Qt::CaseInsensitive)) return 0;
  const QStringList initials = {makeJm(caption), spokenInitials(caption)};
  const auto anyInitials = [&](auto matches) { return std::any_of(initials.begin(), initials.end(), matches); };
  if (anyInitials([&](const QString& text) { return text.startsWith(typed, Qt::CaseInsensitive); })) return 1;
  if (caption.contains(typed, Qt::CaseInsensitive)) return 2;
  return anyInitials([&](const QString& text) { return text.contains(typed, Qt::CaseInsensitive); }) ? 3 : -1;
}

}  // namespace command_search_detail

std::vector<const ui::CommandDefinition*> matchingCommands(const QString& typed) {
  using namespace command_search_detail;
  std::vector<std::pair<int, const ui::CommandDefinition*>> ranked;
  const QString plain = typed.trimmed();
  for (const auto& command : ui::commands()) {
    if (!isShown(command)) continue;
    // One screen stands on several pages under one name: once is enough.
    const bool known = std::any_of(ranked.begin(), ranked.end(), [&](const auto& other) {
      return other.second->screen == command.screen && captionOf(*other.second) == captionOf(command) &&
             !command.screen.empty() && isAllowed(*other.second);
    });
    const int at = plain.isEmpty() ? 0 : rank(command, plain);
    if (at >= 0 && !known) ranked.emplace_back(at, &command);
  }
  std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<const ui::CommandDefinition*> result;
  for (const auto& entry : ranked)
    result.push_back(entry.second);
  return result;
}

CommandSearch::CommandSearch(QWidget* parent, Run run) : QLineEdit(parent), run_(std::move(run)) {
  setObjectName(QStringLiteral("commandSearch"));
  setPlaceholderText(QStringLiteral("查找：功能、商品、单位、单号 (Ctrl+K)"));
  setAccessibleName(QStringLiteral("查找功能"));
  setMaxLength(command_search_detail::kLongest);
  setClearButtonEnabled(true);
  setMinimumWidth(280);
  addAction(ui::icon("search"), QLineEdit::LeadingPosition);
  for (auto* button : findChildren<QToolButton*>()) {
    button->setAccessibleName(QStringLiteral("查找"));
    button->setToolTip(QStringLiteral("清除"));
  }
  list_ = new QListWidget(parent->window());
  list_->setObjectName(QStringLiteral("commandMatches"));
  list_->setAccessibleName(QStringLiteral("找到的功能"));
  list_->setFocusPolicy(Qt::NoFocus);
  list_->hide();
  connect(this, &QLineEdit::textChanged, this, [this] { refill(); });
  pause_.setSingleShot(true);
  pause_.setInterval(command_search_detail::kPause);
  connect(&pause_, &QTimer::timeout, this, [this] { readRecords(); });
  connect(list_, &QListWidget::itemClicked, this, [this] { take(); });
}

void CommandSearch::begin() {
  setFocus(Qt::ShortcutFocusReason);
  selectAll();
  refill();
}

void CommandSearch::refill() {
  found_.clear();
  list_->clear();
  for (const auto* command : matchingCommands(text()))
    add({command}, command_search_detail::captionOf(*command), command_search_detail::placeOf(*command));
  list_->setCurrentRow(found_.empty() ? -1 : 0);
  pause_.start();
  showList();
}

void CommandSearch::readRecords() {
  if (goods_) return addRecords();
  if (reading_.isRunning()) return;
  reading_.load(
      GoodsToFind::statement(),
      [this](const RowSet& goods, bool complete) {
        if (!complete) return;
        goods_.emplace(goods);
        addRecords();
      },
      [this](const std::exception_ptr&) { addRecords(); });  // the next key asks again
}

void CommandSearch::addRecords() {
  if (!hasFocus()) return;
  for (const auto& record : findRecords(text(), goods_.value_or(GoodsToFind())))
    if (const auto* command = ui::findCommand(record.command); command && isShown(*command) && isAllowedNow(*command))
      add({command, record.number}, record.text, command_search_detail::captionOf(*command));
  const auto tell = [this](const QString& text) {
    auto* line = new QListWidgetItem(text, list_);
    line->setFlags(Qt::NoItemFlags);
    return line;
  };
  if (!goods_) {
    tell(QStringLiteral("商品读取失败，请重新查找"))->setForeground(ui::skinColour(QStringLiteral("warning")));
  } else if (found_.empty()) {
    tell(QStringLiteral("没有找到"));
  }
  if (!found_.empty() && list_->currentRow() < 0) list_->setCurrentRow(0);
  showList();
}

bool CommandSearch::isAllowedNow(const ui::CommandDefinition& command) {
  const auto [known, isNew] = allowed_.try_emplace(&command, false);
  if (isNew) known->second = isAllowed(command);
  return known->second;
}

void CommandSearch::add(const Entry& entry, const QString& text, const QString& place) {
  const bool allowed = isAllowedNow(*entry.command);
  auto* item = new QListWidgetItem(ui::icon(entry.command->icon),
                                   text + u'　' + (allowed ? place : QStringLiteral("没有权限")), list_);
  if (!allowed) {
    item->setForeground(palette().brush(QPalette::PlaceholderText));
    item->setToolTip(refusalOf(*entry.command));
  }
  found_.push_back(entry);
}

void CommandSearch::showList() {
  const bool show = hasFocus() && list_->count() > 0;
  if (show) {
    const int rows = std::min(10, list_->count());
    const QPoint below = mapTo(window(), QPoint(0, height() + 2));
    list_->setGeometry(below.x(), below.y(), width(), rows * std::max(24, list_->sizeHintForRow(0)) + 6);
    list_->raise();
  }
  list_->setVisible(show);
}

void CommandSearch::take() {
  if (pause_.isActive()) {           // who is quicker than the pause means what he has typed
    constexpr int kPatience = 2000;  // ms
    pause_.stop();
    readRecords();
    reading_.waitFor(kPatience);
  }
  const int row = list_->currentRow();
  if (row < 0 || row >= static_cast<int>(found_.size())) return;
  const Entry entry = found_[static_cast<std::size_t>(row)];
  clear();
  list_->hide();
  run_(*entry.command, entry.searched);
}

void CommandSearch::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Up: {
      const int step = event->key() == Qt::Key_Down ? 1 : -1;
      if (!list_->isVisible()) return refill();
      if (found_.empty()) return;
      return list_->setCurrentRow(std::clamp(list_->currentRow() + step, 0, list_->count() - 1));
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return take();
    case Qt::Key_Escape:
      clear();
      list_->hide();
      return parentWidget()->setFocus();
    case Qt::Key_K:  // with Ctrl it begins anew; under X it would cut the line off
      if (event->modifiers() == Qt::ControlModifier) return begin();
      break;
    default:
      break;
  }
  QLineEdit::keyPressEvent(event);
}

void CommandSearch::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  allowed_.clear();
  // What stands in it is typed over, however the focus came; a click marks after the release of the mouse.
  if (event->reason() == Qt::MouseFocusReason) QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

void CommandSearch::focusOutEvent(QFocusEvent* event) {
  list_->hide();
  reading_.cancel();
  goods_.reset();
  QLineEdit::focusOutEvent(event);
}

}  // namespace jxc
