#include "ui/screen.h"

#include "ui/application.h"
#include "ui/display.h"
#include "ui/grid_output.h"
#include "ui/message_box_prompt.h"
#include "ui/quiet_line.h"
#include "ui/refused_input.h"
#include "ui/scrolling.h"
#include "ui/typed_ahead.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QApplication>
#include <QBackingStore>
#include <QKeyEvent>
#include <QLabel>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
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

/// What a screen is for: it stands out, Enter ends on it, and what was typed for it is not left without a question.
bool isMain(const CommandSpec& command) {
  return command.name == "btnOK" || command.name == "btnOk" || command.name == "btnSave" || command.key == "F5";
}

/// Turns the pages around a widget so that it is seen.
void turnPagesTo(QWidget* widget) {
  for (auto* around = widget; around && !around->isWindow(); around = around->parentWidget()) {
    auto* pages = around->parentWidget() ? qobject_cast<QTabWidget*>(around->parentWidget()->parentWidget()) : nullptr;
    if (pages && pages->indexOf(around) >= 0) pages->setCurrentWidget(around);
  }
}

/// Where Enter stops on its way: an unmarked choice has a marked one beside it.
bool isMarkedElsewhere(const QWidget& widget) {
  const auto* choice = qobject_cast<const QRadioButton*>(&widget);
  if (!choice || choice->isChecked()) return false;
  const auto beside = choice->parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
  return std::any_of(beside.begin(), beside.end(), [](const QRadioButton* each) { return each->isChecked(); });
}

}  // namespace screen_detail

class Screen::OwnPrompt : public MessageBoxPrompt {
 public:
  explicit OwnPrompt(Screen& screen) : MessageBoxPrompt(&screen), screen_(screen) {}
  void refuse(const Refusal& refusal) override {
    notice(refusal.text);
    screen_.leadTo(refusal);
  }
  void say(const QString& text) override { screen_.say(text); }

 private:
  Screen& screen_;
};

Screen::Screen(const ScreenSpec& spec) : spec_(spec), prompt_(std::make_unique<OwnPrompt>(*this)) {
  setObjectName(qs(spec.name));
  setWindowTitle(qs(spec.title));
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  setWindowFlag(Qt::WindowMaximizeButtonHint, true);
  setModal(true);
  outer_ = new QVBoxLayout(this);
  for (const auto& field : spec.fields) {
    fields_.push_back(std::make_unique<Field>(field, this));
    fields_.back()->onPicked([this, made = fields_.back().get()] { pickedIn(*made); });
  }
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
    if (screen_detail::isMain(command)) part->button->setProperty("main", true);
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
    if (grid->rowsHaveFocus()) return grid;
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
    if (!field->widget()->isVisible() || kind == FieldKind::Password || kind == FieldKind::Secret ||
        kind == FieldKind::Memo)
      continue;
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
  connect(&command, &QPushButton::clicked, this, [action = std::move(action)] { doOrTell(action); });
}

void Screen::addKey(QPushButton& command, const char* key) {
  for (auto& part : commands_) {
    if (part->button == &command) part->keys.emplace_back(QString::fromLatin1(key));
  }
}

bool Screen::showModal(const QString& searched) {
  placeRest();
  for (Grid* grid : grids_)
    grid->applyRights();
  if (said_) say({});
  activate();
  closeWhatWrites();
  focusFirst();
  if (!searched.isEmpty() && hasField("tkey")) {
    QTimer::singleShot(0, this, [this, searched] {
      field("tkey").typeIn(searched);
      field("tkey").enterPressed();
    });
  }
  const bool accepted = exec() == QDialog::Accepted;
  // What stood below it is forgotten: where the next screen comes up before the desktop has told which window is active
  // now, two that follow each other would take each other for what stands below, and the toolkit never finds the end.
  if (QWindow* window = windowHandle()) window->setTransientParent(nullptr);
  // Its picture is painted anew when it comes back; kept, it would be some megabytes for each screen that was ever
  // open.
  if (QBackingStore* pixels = backingStore()) pixels->resize(QSize(1, 1));
  // What a dialog has done is read where it has led back to.
  auto* below = dynamic_cast<Screen*>(QApplication::activeModalWidget());
  if (accepted && below && !said().isEmpty()) below->say(said());
  return accepted;
}

void Screen::present() {
  placeRest();
  for (Grid* grid : grids_)
    grid->applyRights();
  if (said_) say({});
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
  const auto goesOnTo = [&last](QWidget* widget) {
    if (last) setTabOrder(last, widget);
    last = widget;
  };
  for (auto* placed : placed_) {
    if (auto* proxy = placed->focusProxy(); proxy || placed->focusPolicy() != Qt::NoFocus) {
      goesOnTo(proxy ? proxy : placed);
      continue;
    }
    if (placed->findChild<QTabWidget*>()) continue;      // pages have an order of their own
    for (auto* part : placed->findChildren<QWidget*>())  // a tree with its search, a sheet
      if (part->window() == window() && part->focusPolicy() & Qt::TabFocus && !part->focusProxy()) goesOnTo(part);
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
  auto* scroll = scrolling(content, this);
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

QPushButton* Screen::mainCommand() const {
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    auto* button = commands_[i]->button;
    if (screen_detail::isMain(spec_.commands[i]) && button->isVisible() && button->isEnabled()) return button;
  }
  return nullptr;
}

bool Screen::isTouched() const {
  return std::any_of(fields_.begin(), fields_.end(), [this](const auto& field) {
    const auto* widget = field->widget();
    const bool searches = std::any_of(grids_.begin(), grids_.end(), [&](auto* g) { return g->followsKeysOf(widget); });
    return field->isTouched() && field->isVisible() && !field->isReadOnly() && !searches;
  });
}

bool Screen::mayLeave() {
  return !mainCommand() || !isTouched() || prompt().ask(QStringLiteral("输入的内容还没有确定，放弃吗？"));
}

void Screen::say(const QString& text) {
  if (!said_) {
    said_ = new QuietLine(this);
    said_->setObjectName(QStringLiteral("quietLine"));
    outer_->addWidget(said_);
  }
  said_->show();  // at once, or a screen reader hears nothing
  said_->showMessage(text);
}

QString Screen::said() const {
  return said_ ? said_->currentMessage() : QString();
}

void Screen::leadTo(const Refusal& refusal) {
  if (!isVisible()) return;
  const auto toRow = [&] {
    return !refusal.row.isEmpty() && std::any_of(grids_.begin(), grids_.end(), [&](Grid* grid) {
      const bool isThere =
          grid->isVisible() && (grid->selectWhere("g_sn", refusal.row) || grid->selectWhere("gl_djh", refusal.row));
      if (isThere) grid->focusRows();
      return isThere;
    });
  };
  const bool isRow = refusal.about == Subject::Lines;
  if (isRow && toRow()) return;
  const std::string setting = refusal.about == Subject::Setting ? refusal.row.toStdString() : std::string();
  const std::string_view settings[] = {setting};
  for (const std::string_view name : setting.empty() ? inputsOf(refusal.about) : settings) {
    Field* described = hasField(name) ? &field(name) : nullptr;
    auto* input = described ? described->widget() : findChild<QWidget*>(qs(name));
    if (!input || !input->isEnabled() || (described && (!described->isVisible() || described->isReadOnly()))) continue;
    if (isRow && !input->isVisible()) continue;  // of a list in sight: no page turns to another document
    screen_detail::turnPagesTo(input);
    if (described)
      described->focus();
    else
      input->setFocus();
    return screen_detail::bringIntoSight(input);
  }
  toRow();
}

bool Screen::checkFields() {
  for (const auto& field : fields_) {
    if (!field->isVisible()) continue;
    const auto problem = field->problem();
    if (!problem) continue;
    prompt().notice(*problem);
    screen_detail::turnPagesTo(field->widget());
    field->focus();
    return false;
  }
  return true;
}

void Screen::enterPressed(Field&) {
  QWidget* const from = focusWidget();
  if (!from) return;
  const auto* end = mainCommand();
  const auto isInput = [this](const QWidget* widget) {
    return std::any_of(fields_.begin(), fields_.end(),
                       [&](const auto& field) { return field->widget() == widget && !field->isReadOnly(); });
  };
  for (auto* next = from->nextInFocusChain(); next != from; next = next->nextInFocusChain()) {
    const bool takesKeys = next->isVisible() && next->isEnabled() && (next->focusPolicy() & Qt::TabFocus);
    if (!takesKeys || next->window() != window() || screen_detail::isMarkedElsewhere(*next)) continue;
    if (end && next != end && !isInput(next)) continue;
    next->setFocus(Qt::TabFocusReason);
    break;
  }
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

bool openScreen(std::string_view name, const QString& searched) {
  if (isScreenRegistered(name)) return screenNamed(name).showModal(searched);
  MessageBoxPrompt(QApplication::activeWindow()).notice(QStringLiteral("“%1”功能尚未提供！").arg(qs(name)));
  return false;
}

void dropScreens() {
  screen_detail::registry().instances.clear();
}

}  // namespace jxc::ui
