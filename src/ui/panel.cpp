// Areas of a screen and how its parts stand in them.
#include "ui/display.h"
#include "ui/screen.h"
#include "ui/scrolling.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace jxc::ui {
namespace panel_detail {

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> result;
  std::size_t at = 0;
  while ((at = text.find_first_not_of(' ', at)) != std::string_view::npos) {
    const auto end = std::min(text.find(' ', at), text.size());
    result.push_back(text.substr(at, end - at));
    at = end;
  }
  return result;
}

/// Opens with all of its content where there is room, and scrolls down only.
class DownScrolling : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;
  QSize sizeHint() const override { return besideBar(widget()->sizeHint()); }
  QSize minimumSizeHint() const override {
    return {besideBar(widget()->minimumSizeHint()).width(), QScrollArea::minimumSizeHint().height()};
  }

 private:
  QSize besideBar(const QSize& content) const {
    return content + QSize(style()->pixelMetric(QStyle::PM_ScrollBarExtent), 0);
  }
};

}  // namespace panel_detail

Panel& Panel::form(std::span<const std::string_view> rows) {
  auto* raster = new QGridLayout;
  std::size_t most = 0;
  for (const auto row : rows)
    most = std::max(most, panel_detail::words(row).size());
  int line = 0;
  for (const auto row : rows) {
    const auto names = panel_detail::words(row);
    for (std::size_t i = 0; i < names.size(); ++i) {
      Field& field = screen_->field(names[i]);
      const int column = static_cast<int>(i) * 2;
      const int span = i + 1 == names.size() ? static_cast<int>(most - i) * 2 - 1 : 1;
      if (field.label()) {
        const bool high = field.spec().kind == FieldKind::Memo;
        raster->addWidget(field.label(), line, column, Qt::AlignRight | (high ? Qt::AlignTop : Qt::AlignVCenter));
      }
      if (field.suffix()) {
        auto* both = new QHBoxLayout;
        both->addWidget(field.widget(), 1);
        both->addWidget(field.suffix());
        raster->addLayout(both, line, column + 1, 1, span);
      } else {
        raster->addWidget(field.widget(), line, column + 1, 1, span);
      }
      screen_->placed_.push_back(field.widget());
    }
    ++line;
  }
  for (std::size_t i = 0; i < most; ++i)
    raster->setColumnStretch(static_cast<int>(i) * 2 + 1, 1);
  layout_->addLayout(raster);
  return *this;
}

Panel& Panel::grid(std::string_view name, int stretch) {
  Grid& grid = screen_->grid(name);
  layout_->addWidget(&grid, stretch);
  screen_->placed_.push_back(&grid);
  return *this;
}

Panel& Panel::buttons(std::string_view names) {
  return row(names);
}

Panel& Panel::row(std::string_view names) {
  auto* line = new QHBoxLayout;
  bool stretched = false;
  for (const auto name : panel_detail::words(names)) {
    if (name == "|") {
      line->addStretch(1);
      stretched = true;
    } else if (screen_->hasField(name)) {
      Field& field = screen_->field(name);
      if (field.label()) line->addWidget(field.label());
      line->addWidget(field.widget());
      if (field.suffix()) line->addWidget(field.suffix());
      screen_->placed_.push_back(field.widget());
    } else {
      QPushButton& button = screen_->command(name);
      line->addWidget(&button);
      screen_->placed_.push_back(&button);
    }
  }
  if (!stretched) line->addStretch(1);
  layout_->addLayout(line);
  return *this;
}

Panel& Panel::widget(QWidget* widget, int stretch) {
  layout_->addWidget(widget, stretch);
  screen_->placed_.push_back(widget);
  return *this;
}

Panel& Panel::line(const QString& text, const char* look) {
  auto* label = new QLabel(text, screen_);
  label->setWordWrap(true);
  label->setProperty(look, true);
  layout_->addWidget(label);
  return *this;
}

Panel& Panel::text(const QString& text) {
  return line(text, "explanation");
}

Panel& Panel::warning(const QString& text) {
  return line(text, "warning");
}

Panel& Panel::stretch() {
  layout_->addStretch(1);
  return *this;
}

Panel Panel::group(const QString& title) {
  auto* box = new QGroupBox(title, screen_);
  auto* layout = new QVBoxLayout(box);
  layout_->addWidget(box);
  return Panel(*screen_, layout);
}

Panel Panel::area(QWidget*& made, int stretch) {
  made = new QWidget(screen_);
  auto* layout = new QVBoxLayout(made);
  layout->setContentsMargins(0, 0, 0, 0);
  layout_->addWidget(made, stretch);
  return Panel(*screen_, layout);
}

Panel Panel::page(std::string_view name, const QString& title, PageKind kind) {
  if (!*tabs_) {
    *tabs_ = new QTabWidget(screen_);
    (*tabs_)->setDocumentMode(true);
    layout_->addWidget(*tabs_, 1);
  }
  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  QWidget* page = content;
  if (kind == Scrolls) page = scrolling(content);
  page->setObjectName(qs(name));
  page->setAccessibleName(title);
  (*tabs_)->addTab(page, title);
  return Panel(*screen_, layout);
}

Panel Panel::scrolled() {
  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, 0, 0);
  layout_->addWidget(scrolling<panel_detail::DownScrolling>(content, screen_), 1);
  return Panel(*screen_, layout);
}

std::pair<Panel, Panel> Panel::columns(int firstStretch, int secondStretch) {
  auto* both = new QHBoxLayout;
  auto* first = new QVBoxLayout;
  auto* second = new QVBoxLayout;
  both->addLayout(first, firstStretch);
  both->addLayout(second, secondStretch);
  layout_->addLayout(both, 1);
  return {Panel(*screen_, first), Panel(*screen_, second)};
}

}  // namespace jxc::ui
