#include "ui/screen.h"

#include "ui/display.h"
#include "ui/grid_output.h"
#include "ui/message_box_prompt.h"
#include "ui/typed_ahead.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>
#include <QWindow>

#include <map>
#include <stdexcept>

namespace jxc::ui {

struct Screen::CommandPart {
  QPushButton* button = nullptr;
  std::vector<QKeySequence> keys;
  bool handled = false;  // someone listens
};

namespace screen_detail {

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

[[noreturn]] void unknown(std::string_view screen, const char* what, std::string_view name) {
  throw std::invalid_argument(std::string(screen) + ": no " + what + " \"" + std::string(name) + "\"");
}

struct Registry {
  std::map<std::string, ScreenFactory, std::less<>> factories;
  std::map<std::string, std::unique_ptr<Screen>, std::less<>> instances;
};

Registry& registry() {
  static Registry all;
  return all;
}

QScrollArea* scrolling(QWidget* content, QWidget* parent = nullptr) {
  auto* scroll = new QScrollArea(parent);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(content);
  return scroll;
}

/// Scrolls all areas around a widget to it.
void bringIntoSight(QWidget* widget) {
  for (auto* around = widget ? widget->parentWidget() : nullptr; around; around = around->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(around)) area->ensureWidgetVisible(widget);
  }
}

QKeySequence keyOf(const QKeyEvent& event) {
  auto key = event.key();
  if (key == Qt::Key_Enter) key = Qt::Key_Return;
  return QKeySequence(static_cast<int>((event.modifiers() & ~Qt::KeypadModifier).toInt()) | key);
}

/// What stands in a cell that is being typed in counts for a command that is called by its key.
void closeCell(QWidget* focused) {
  for (QWidget* editor = focused; editor && editor->parentWidget(); editor = editor->parentWidget()) {
    auto* list = qobject_cast<QAbstractItemView*>(editor->parentWidget()->parentWidget());
    if (!list || list->viewport() != editor->parentWidget()) continue;
    auto* delegate = list->itemDelegateForIndex(list->currentIndex());
    Q_EMIT delegate->commitData(editor);
    Q_EMIT delegate->closeEditor(editor, QAbstractItemDelegate::NoHint);
    // A list tells its screen of the change a moment later; the command must not be quicker.
    QCoreApplication::sendPostedEvents(list->model(), QEvent::MetaCall);
    return;
  }
}

}  // namespace screen_detail

Screen::Screen(const ScreenSpec& spec) : spec_(spec), prompt_(std::make_unique<MessageBoxPrompt>(this)) {
  setObjectName(qs(spec.name));
  setWindowTitle(qs(spec.title));
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  setWindowFlag(Qt::WindowMaximizeButtonHint, true);
  setModal(true);
  outer_ = new QVBoxLayout(this);
  for (const auto& field : spec.fields)
    fields_.push_back(std::make_unique<Field>(field, this));
  for (const auto& grid : spec.grids)
    addGrid(grid);
  for (const auto& command : spec.commands) {
    auto part = std::make_unique<CommandPart>();
    part->button = new QPushButton(this);
    part->button->setObjectName(qs(command.name));
    QString caption = qs(command.caption);
    const QString key = qs(command.key);
    if (!key.isEmpty() && !caption.contains(u'(')) caption += u'(' + key + u')';
    part->button->setText(caption);
    part->button->setAutoDefault(false);
    if (!command.tooltip.empty()) part->button->setToolTip(qs(command.tooltip));
    if (!key.isEmpty()) part->keys.emplace_back(key);
    CommandPart* kept = part.get();
    const bool leaves = command.key == "Esc";
    const bool exports = command.name == "btn_Export";
    connect(kept->button, &QPushButton::clicked, this, [this, kept, leaves, exports] {
      if (kept->handled) return;
      if (leaves) reject();
      if (exports) exportInSight();
    });
    commands_.push_back(std::move(part));
  }
}

Screen::~Screen() = default;

Field& Screen::field(std::string_view name) {
  for (auto& field : fields_) {
    if (field->spec().name == name) return *field;
  }
  screen_detail::unknown(spec_.name, "field", name);
}

bool Screen::hasField(std::string_view name) const {
  return std::any_of(fields_.begin(), fields_.end(), [&](const auto& f) { return f->spec().name == name; });
}

Grid& Screen::grid(std::string_view name) {
  for (auto* grid : grids_) {
    if (grid->spec().name == name) return *grid;
  }
  screen_detail::unknown(spec_.name, "grid", name);
}

QPushButton& Screen::command(std::string_view name) {
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    if (spec_.commands[i].name == name) return *commands_[i]->button;
  }
  screen_detail::unknown(spec_.name, "command", name);
}

std::vector<Field*> Screen::fields() const {
  std::vector<Field*> result;
  for (const auto& field : fields_)
    result.push_back(field.get());
  return result;
}

std::vector<Grid*> Screen::grids() const {
  return grids_;
}

void Screen::addGrid(const GridSpec& spec) {
  auto* grid = new Grid(spec, spec_.name, this);
  grids_.push_back(grid);
  grid->setHeading([this, grid] {
    const QString title = windowTitle();
    return GridHeading{grids_.size() == 1 ? title : title + u'-' + qs(grid->spec().caption), inputsInWords()};
  });
}

Grid* Screen::gridInSight() const {
  Grid* first = nullptr;
  for (auto* grid : grids_) {
    if (!grid->isVisible()) continue;
    if (grid->view()->hasFocus()) return grid;
    if (!first) first = grid;
  }
  return first;
}

void Screen::exportInSight() {
  if (auto* grid = gridInSight()) exportGrid(*grid);
}

QString Screen::inputsInWords() const {
  QStringList words;
  for (const auto& field : fields_) {
    const FieldKind kind = field->spec().kind;
    if (!field->widget()->isVisible() || kind == FieldKind::Password || kind == FieldKind::Memo) continue;
    if (kind == FieldKind::Check || kind == FieldKind::Radio) {
      if (field->isChecked()) words << qs(field->spec().label);
    } else if (!field->isEmpty() && field->label()) {
      words << field->label()->text().remove(u'&') + field->trimmed();
    }
  }
  return words.join(u'　');
}

Prompt& Screen::prompt() {
  return *prompt_;
}

Panel Screen::panel() {
  return Panel(*this, outer_);
}

void Screen::on(QPushButton& command, std::function<void()> action) {
  for (auto& part : commands_) {
    if (part->button == &command) part->handled = true;
  }
  connect(&command, &QPushButton::clicked, this, std::move(action));
}

void Screen::addKey(QPushButton& command, const char* key) {
  for (auto& part : commands_) {
    if (part->button == &command) part->keys.emplace_back(QString::fromLatin1(key));
  }
}

bool Screen::showModal() {
  placeRest();
  for (Grid* grid : grids_)
    grid->applyRights();
  activate();
  focusFirst();
  return exec() == QDialog::Accepted;
}

void Screen::present() {
  placeRest();
  for (Grid* grid : grids_)
    grid->applyRights();
  activate();
  focusFirst();
  show();
}

void Screen::standIn(QWidget& page) {
  setModal(false);
  setParent(&page, Qt::Widget);
  outer_->setContentsMargins(0, 0, 0, 0);
  page.layout()->addWidget(this);
  for (std::size_t i = 0; i < commands_.size(); ++i)
    if (spec_.commands[i].key == "Esc") commands_[i]->button->hide();
}

void Screen::reject() {
  if (auto* around = isWindow() ? nullptr : qobject_cast<QDialog*>(window())) return around->reject();
  if (mayLeave()) QDialog::reject();
}

void Screen::placeRest() {
  if (complete_) return;
  complete_ = true;
  const auto isPlaced = [this](const QWidget* widget) {
    return std::find(placed_.begin(), placed_.end(), widget) != placed_.end();
  };
  const bool nothingYet = placed_.empty();
  auto rest = panel();
  std::vector<std::string_view> loose;
  for (const auto& field : fields_) {
    if (!isPlaced(field->widget())) loose.push_back(field->spec().name);
  }
  const std::size_t perRow = loose.size() > 7 ? 2 : 1;
  std::vector<std::string> rows;
  for (std::size_t i = 0; i < loose.size(); i += perRow) {
    std::string row;
    for (std::size_t k = i; k < std::min(i + perRow, loose.size()); ++k)
      row += std::string(loose[k]) + ' ';
    rows.push_back(row);
  }
  if (!rows.empty()) rest.form(std::vector<std::string_view>(rows.begin(), rows.end()));
  for (auto* grid : grids_) {
    if (!isPlaced(grid)) rest.grid(grid->spec().name);
  }
  std::string names;
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    if (!isPlaced(commands_[i]->button)) names += std::string(spec_.commands[i].name) + ' ';
  }
  if (!names.empty()) rest.buttons((nothingYet && grids_.empty() ? "| " : "") + names);
  orderTabs();
}

// Tab and Enter go as the screen is read, whatever the order of the description.
void Screen::orderTabs() {
  QWidget* last = nullptr;
  for (auto* placed : placed_) {
    auto* widget = placed->focusProxy() ? placed->focusProxy() : placed;
    if (last) setTabOrder(last, widget);
    last = widget;
  }
}

// At twice the scale a form may be higher than the display: then all of it scrolls.
void Screen::scrollWhenTooLarge(const QSize& room) {
  const QSize least = minimumSizeHint();
  if (least.width() <= room.width() && least.height() <= room.height()) return;
  if (layout() != outer_) return;  // done at an earlier showing
  auto* focused = focusWidget();   // moving to another parent loses it
  auto* content = new QWidget;
  content->setLayout(outer_);
  auto* scroll = screen_detail::scrolling(content, this);
  auto* around = new QVBoxLayout(this);
  around->setContentsMargins(0, 0, 0, 0);
  around->addWidget(scroll);
  scroll->show();        // at once: keys come before the next round of events
  setMinimumSize(0, 0);  // the old layout's
  scroll->show();        // not only when the event loop comes to it: keys must find their commands at once
  around->activate();
  orderTabs();
  if (focused) focused->setFocus(Qt::OtherFocusReason);
}

void Screen::focusFirst() {
  if (!spec_.focus.empty()) {
    if (hasField(spec_.focus)) return field(spec_.focus).focus();
    for (auto* grid : grids_) {
      if (grid->spec().name == spec_.focus) return grid->focusRows();
    }
  }
  for (const auto& field : fields_) {
    if (field->isVisible() && field->isEnabled() && !field->isReadOnly()) return field->focus();
  }
  if (!grids_.empty()) grids_.front()->focusRows();
}

bool Screen::checkFields() {
  for (const auto& field : fields_) {
    if (!field->isVisible()) continue;
    const auto problem = field->problem();
    if (!problem) continue;
    prompt().notice(*problem);
    field->focus();
    return false;
  }
  return true;
}

void Screen::enterPressed(Field&) {
  focusNextPrevChild(true);
  screen_detail::bringIntoSight(focusWidget());
}

bool Screen::runKey(const QKeySequence& key) {
  bool isGrey = false;  // a command in sight that cannot be given now: its key does nothing else meanwhile
  for (const auto& part : commands_) {
    if (!part->button->isVisible()) continue;
    if (std::find(part->keys.begin(), part->keys.end(), key) == part->keys.end()) continue;
    if (!part->button->isEnabled()) {
      isGrey = true;
      continue;
    }
    screen_detail::closeCell(focusWidget());
    part->button->click();
    return true;
  }
  return isGrey;
}

bool Screen::takeCommandKey(const QKeyEvent& key) {
  const bool isInputsOwn =
      std::any_of(fields_.begin(), fields_.end(), [&](const auto& f) { return f->hasFocus() && f->isOpenedBy(key); });
  return !isInputsOwn && runKey(screen_detail::keyOf(key));
}

void Screen::keyPressEvent(QKeyEvent* event) {
  const auto key = screen_detail::keyOf(*event);
  auto* now = focusWidget();
  if (key == QKeySequence(Qt::Key_Return)) {
    if (auto* button = qobject_cast<QPushButton*>(now)) return button->click();
    for (const auto& field : fields_) {
      if (!field->hasFocus()) continue;
      if (!field->enterPressed()) enterPressed(*field);
      return;
    }
  }
  if (runKey(key) || keyPressed(*event)) return;
  if (key == QKeySequence(Qt::CTRL | Qt::Key_S)) return exportInSight();
  if (key == QKeySequence(Qt::CTRL | Qt::Key_P)) {
    if (auto* grid = gridInSight()) printGrid(*grid);
    return;
  }
  if (key == QKeySequence(Qt::Key_Escape)) return reject();
  if (key == QKeySequence(Qt::Key_Return)) return;  // never the default button of the toolkit
  QDialog::keyPressEvent(event);
}

void Screen::showEvent(QShowEvent* event) {
  // Inside another screen, which has the room, it is no dialog that looks for its place.
  if (!isWindow()) return QWidget::showEvent(event);  // NOLINT(bugprone-parent-virtual-call)
  // Every screen fits a small display, also at twice the scale; what is larger scrolls inside its grids.
  if (const auto* display = screen()) {
    const QSize room = display->availableSize() - QSize(16, 48);
    const QSize wish = sizeHint().expandedTo(grids_.empty() ? QSize(380, 0) : QSize(1000, 620)).boundedTo(room);
    scrollWhenTooLarge(room);
    if (!testAttribute(Qt::WA_Resized) || width() > room.width() || height() > room.height()) resize(wish);
  }
  // Screens are kept without a parent, so that none goes with another; for the desktop they belong to what they stand
  // on.
  auto* below = windowInFront();
  if (below && below != this && windowHandle() && below->window()->windowHandle()) {
    windowHandle()->setTransientParent(below->window()->windowHandle());
    if (!event->spontaneous()) {
      const QRect under = below->window()->frameGeometry();
      QPoint corner = under.center() - QPoint(width() / 2, height() / 2);
      if (const auto* display = screen()) {
        const QRect room = display->availableGeometry();
        corner.setX(std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() - width())));
        corner.setY(std::clamp(corner.y(), room.top(), std::max(room.top(), room.bottom() - height())));
      }
      move(corner);
    }
  }
  QDialog::showEvent(event);
}

// --- Panel ---

Panel& Panel::form(std::span<const std::string_view> rows) {
  auto* raster = new QGridLayout;
  std::size_t most = 0;
  for (const auto row : rows)
    most = std::max(most, screen_detail::words(row).size());
  int line = 0;
  for (const auto row : rows) {
    const auto names = screen_detail::words(row);
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
  for (const auto name : screen_detail::words(names)) {
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
  return *this;
}

Panel& Panel::text(const QString& text) {
  auto* label = new QLabel(text, screen_);
  label->setWordWrap(true);
  label->setProperty("explanation", true);
  layout_->addWidget(label);
  return *this;
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
  if (kind == Scrolls) page = screen_detail::scrolling(content);
  page->setObjectName(qs(name));
  page->setAccessibleName(title);
  (*tabs_)->addTab(page, title);
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

// --- Registry ---

void registerScreen(std::string_view name, ScreenFactory factory) {
  screen_detail::registry().factories.insert_or_assign(std::string(name), std::move(factory));
}

bool isScreenRegistered(std::string_view name) {
  return screen_detail::registry().factories.contains(name);
}

std::vector<std::string> registeredScreens() {
  std::vector<std::string> names;
  for (const auto& [name, factory] : screen_detail::registry().factories)
    names.push_back(name);
  return names;
}

Screen& screenNamed(std::string_view name) {
  auto& all = screen_detail::registry();
  const auto known = all.instances.find(name);
  if (known != all.instances.end()) return *known->second;
  return *all.instances.emplace(std::string(name), std::unique_ptr<Screen>(newScreen(name))).first->second;
}

Screen* newScreen(std::string_view name) {
  const auto& all = screen_detail::registry();
  const auto factory = all.factories.find(name);
  if (factory == all.factories.end()) throw std::invalid_argument("no screen \"" + std::string(name) + "\"");
  return factory->second();
}

bool openScreen(std::string_view name) {
  if (isScreenRegistered(name)) return screenNamed(name).showModal();
  MessageBoxPrompt(QApplication::activeWindow()).notice(QStringLiteral("“%1”功能尚未提供！").arg(qs(name)));
  return false;
}

void dropScreens() {
  screen_detail::registry().instances.clear();
}

}  // namespace jxc::ui
