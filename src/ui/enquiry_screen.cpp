#include "ui/enquiry_screen.h"

#include "core/comparison.h"
#include "core/rights.h"
#include "core/text.h"
#include "ui/display.h"
#include "ui/enquiry_lines.h"
#include "ui/enquiry_parts.h"
#include "ui/period_menu.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QTabWidget>

#include <algorithm>
#include <sstream>

namespace jxc::ui {
namespace enquiry_screen_detail {

bool holds(std::string_view names, std::string_view name) {
  if (names.empty()) return true;
  const std::string all = ' ' + std::string(names) + ' ';
  return all.find(' ' + std::string(name) + ' ') != std::string::npos;
}

bool isBox(Asks asks) {
  return asks == Asks::Exact || asks == Asks::Descending || asks == Asks::Box;
}

bool isPeriod(Asks asks) {
  return asks == Asks::From || asks == Asks::To;
}

constexpr int kLongestKey = 50;

FieldSpec fieldOf(const Criterion& criterion) {
  FieldSpec field{.name = criterion.name, .label = criterion.label, .kind = FieldKind::Combo};
  if (isPeriod(criterion.asks) || criterion.asks == Asks::Day) {
    field.kind = FieldKind::Date;
    if (criterion.months) field.flags = WholeMonth;
  } else if (isBox(criterion.asks)) {
    field.kind = FieldKind::Check;
  } else if (criterion.asks == Asks::Key) {
    field.kind = FieldKind::Text;
    field.width = kLongestKey;
  } else if (criterion.asks == Asks::Amount) {
    field.kind = criterion.whole ? FieldKind::Integer : FieldKind::Quantity;
  } else if (criterion.pick) {
    field.kind = FieldKind::Picker;
    field.flags = MayBeEmpty;
  }
  return field;
}

// The earlier figure and the change stand behind their column.
GridSpec Parts::gridOf(const EnquiryView& view) {
  if (view.compares.empty()) return view.grid;
  std::vector<ColumnSpec>& columns = columns_.emplace_back();
  const auto keep = [this](std::string text) -> std::string_view { return texts_.emplace_back(std::move(text)); };
  for (const ColumnSpec& column : view.grid.columns) {
    columns.push_back(column);
    if (std::ranges::find(view.compares, column.field) == view.compares.end()) continue;
    ColumnSpec earlier = column, change = column;
    earlier.field = keep(earlierField(column.field));
    earlier.caption = keep("上期" + std::string(column.caption));
    change.field = keep(changeField(column.field));
    change.caption = keep(std::string(column.caption) + "增减%");
    change.kind = ColumnKind::Percent;
    change.width = 0;
    change.use.sum = false;
    columns.push_back(earlier);
    columns.push_back(change);
  }
  GridSpec grid = view.grid;
  grid.columns = columns;
  return grid;
}

Parts::Parts(const EnquirySpec& spec) {
  const auto describe = [this](std::span<const EnquiryCommand> described) {
    for (const EnquiryCommand& each : described) {
      commandSpecs.push_back({each.name, each.caption, each.key});
      if (each.preview.name.empty()) continue;
      const std::string_view key = each.key.empty() ? each.key : texts_.emplace_back("Shift+" + std::string(each.key));
      commandSpecs.push_back({each.preview.name, "预览影响", key});
    }
  };
  bool hasChart = false;
  if (spec.side) gridSpecs.push_back(spec.side->grid);
  if (spec.side && !spec.side->find.empty())
    fieldSpecs.push_back({.name = spec.side->find, .label = "查找：", .width = kLongestKey});
  for (const EnquiryTab& tab : spec.tabs) {
    for (const Criterion& each : tab.criteria) {
      fieldSpecs.push_back(fieldOf(each));
      if (each.asks == Asks::To) commandSpecs.push_back({tab.period, "时间段"});
    }
    if (!tab.search.empty()) commandSpecs.push_back({tab.search, "查询", tab.searchKey});
    for (const EnquiryView& view : tab.views) {
      if (!view.mode.name.empty()) fieldSpecs.push_back({view.mode.name, view.mode.caption, FieldKind::Radio});
      gridSpecs.push_back(gridOf(view));
      for (const RowsBelow* below = view.below; below; below = below->next) {
        if (!below->mode.name.empty()) fieldSpecs.push_back({below->mode.name, below->mode.caption, FieldKind::Radio});
        gridSpecs.push_back(below->grid);
      }
      hasChart = hasChart || !view.chart.label.empty();
    }
    describe(tab.commands);
  }
  describe(spec.commands);
  const auto standard = [this](const CommandSpec& command) {
    const bool described =
        std::ranges::any_of(commandSpecs, [&](const auto& each) { return each.name == command.name; });
    if (!described) commandSpecs.push_back(command);
  };
  if (hasChart) standard({"btn_Chart", "图表", "Ctrl+T"});
  const bool isCtrlP = spec.printKey == EnquirySpec().printKey;
  standard({"btn_Prin", isCtrlP ? "打印" : "打印列表", spec.printKey});
  standard({"btn_Export", "导出", "Ctrl+S"});
  standard({spec.leave, "退出", "Esc"});
  screenSpec = {.name = spec.name,
                .title = spec.title,
                .fields = fieldSpecs,
                .grids = gridSpecs,
                .commands = commandSpecs,
                .focus = spec.focus};
}

std::vector<const EnquirySpec*>& enquiries() {
  static std::vector<const EnquirySpec*> all;
  return all;
}

int roomOf(const QWidget& window) {
  constexpr int kWidest = 1300, kAround = 60, kLeast = 400;
  return window.screen() ? std::clamp(window.screen()->availableSize().width() - kAround, kLeast, kWidest) : kWidest;
}

std::string commandRow(std::span<const EnquiryCommand> commands) {
  std::string row;
  for (const EnquiryCommand& each : commands) {
    row += std::string(each.name) + ' ';
    if (!each.preview.name.empty()) row += std::string(each.preview.name) + ' ';
  }
  return row;
}

std::vector<ListItem> comparisons() {
  return {{QStringLiteral("无"), QString::fromUtf16(allKey)},
          {QStringLiteral("上期"), kPeriodBefore.toString()},
          {QStringLiteral("去年同期"), kLastYear.toString()}};
}

int widthOf(const Field& field) {
  constexpr int kSpace = 14;
  return field.widget()->sizeHint().width() + (field.label() ? field.label()->sizeHint().width() : 0) + kSpace;
}

}  // namespace enquiry_screen_detail

using enquiry_screen_detail::commandRow;
using enquiry_screen_detail::holds;
using enquiry_screen_detail::kGap;

EnquiryServices& enquiryServices() {
  static EnquiryServices services;
  return services;
}

const std::vector<const EnquirySpec*>& registeredEnquiries() {
  return enquiry_screen_detail::enquiries();
}

void registerEnquiry(const EnquirySpec& spec, ScreenFactory factory) {
  registerScreen(spec.name, std::move(factory));
  enquiry_screen_detail::enquiries().push_back(&spec);
}

EnquiryScreen::EnquiryScreen(const EnquirySpec& spec) : Parts(spec), Screen(screenSpec), enquiry_(spec) {
  resize(1160, 680);
  auto around = panel();
  QWidget* middle = nullptr;
  auto area = around.area(middle);
  if (spec.side) {
    auto [left, right] = area.columns(1, 3);
    buildSide(left);
    area = right;
  }
  for (const EnquiryTab& tab : spec.tabs) {
    const bool alone = spec.tabs.size() == 1;
    tabs_.push_back(std::make_unique<Tab>());
    tabs_.back()->spec = &tab;
    buildTab(alone ? area : area.page(tab.name, qs(tab.caption)), tab);
    if (!alone) tabs_.back()->page = area.tabs()->widget(area.tabs()->count() - 1);
  }
  pages_ = area.tabs();
  if (!spec.explanation.empty()) around.text(qs(spec.explanation));
  // The commands of an only tab stand with those that every enquiry has.
  std::string row = spec.tabs.size() == 1 ? commandRow(spec.tabs.front().commands) : std::string();
  row += commandRow(spec.commands);
  const auto isOwn = [&](std::string_view name) {
    const auto describes = [&](const EnquiryCommand& each) { return each.name == name; };
    return std::ranges::none_of(spec.commands, describes) && std::ranges::none_of(spec.tabs, [&](const auto& tab) {
             return std::ranges::any_of(tab.commands, describes);
           });
  };
  const auto bindOwn = [&](std::string_view name, std::function<void()> action) {
    const bool isThere = std::ranges::any_of(commandSpecs, [&](const auto& each) { return each.name == name; });
    if (!isThere || !isOwn(name)) return;
    row += std::string(name) + ' ';
    on(command(name), std::move(action));
  };
  bindOwn("btn_Chart", [this] {
    showChart(viewInSight(), !viewInSight().list->isHidden());
    focusValues(viewInSight());
  });
  bindOwn("btn_Prin", [this] { print(); });
  bindOwn("btn_Export", [this] { exportList(); });
  std::istringstream names(row);
  for (std::string name; names >> name;)
    row_.push_back(&command(name));
  around.area(lines_, 0).buttons(row + "| " + std::string(spec.leave));
  placeCommands();
  bindCommands(spec.commands);
  if (!pages_) return;
  connect(pages_, &QTabWidget::currentChanged, this, [this] {
    if (!isVisible()) return;
    Tab& tab = tabInSight();
    show(tab, *tab.shown);
    load(*tab.shown);
  });
}

EnquiryScreen::~EnquiryScreen() = default;

void EnquiryScreen::buildSide(Panel area) {
  const EnquirySide& spec = *enquiry_.side;
  side_ = &grid(spec.grid.name);
  if (!spec.find.empty()) {
    area.row(std::string(spec.find));
    Field& typed = field(spec.find);
    side_->setRowFilter([&spec, &typed](const RowSet& rows, bool) {
      const QString key = sanitizeKeyword(typed.trimmed());
      std::vector<int> found;
      for (const Row row : rows) {
        const auto holdsKey = [&](std::string_view column) {
          return row.text(column).contains(key, Qt::CaseInsensitive);
        };
        if (key.isEmpty() || (!row.text(spec.grid.idField).isEmpty() && std::ranges::any_of(spec.findIn, holdsKey)))
          found.push_back(row.index());
      }
      return found;
    });
    typed.onChanged([this] { side_->refilter(); });
    side_->followKeysOf(typed.widget());
  }
  area.grid(spec.grid.name);
  side_->onCurrentChanged([this] {
    // The first rows come ahead of the rest: the current one is still the same.
    if (side_->currentKey() == sideKey_ && viewInSight().asked) return;
    sideKey_ = side_->currentKey();
    for (auto& tab : tabs_) {
      tab->path.clear();
      for (auto& view : tab->views)
        view->asked.reset();
    }
    Tab& tab = tabInSight();
    show(tab, *tab.shown);
  });
}

void EnquiryScreen::buildTab(Panel area, const EnquiryTab& spec) {
  Tab& tab = *tabs_.back();
  for (const Criterion& each : spec.criteria)
    tab.inputs.emplace_back(&each, &field(each.name));
  for (const EnquiryView& each : spec.views) {
    tab.views.push_back(std::make_unique<View>());
    View& view = *tab.views.back();
    view.spec = &each;
    view.tab = &tab;
    view.list = &grid(each.grid.name);
    if (!each.mode.name.empty()) view.mode = &field(each.mode.name);
  }
  tab.shown = tab.views.front().get();
  placeInputs(area, tab);

  auto* back = new QPushButton(QStringLiteral("返回(Esc)"));
  back->setObjectName(QStringLiteral("back_") + qs(tab.views.front()->list->spec().name));
  back->setAutoDefault(false);
  connect(back, &QPushButton::clicked, this, [this] { goBack(); });
  auto way = area.area(tab.way, 0);
  tab.wayText = new QLabel;
  tab.wayText->setObjectName(QStringLiteral("way_") + qs(tab.views.front()->list->spec().name));
  auto* line = new QHBoxLayout;
  line->addWidget(back);
  line->addWidget(tab.wayText, 1);
  static_cast<QVBoxLayout*>(tab.way->layout())->addLayout(line);
  tab.way->hide();

  for (auto& view : tab.views)
    buildView(area, tab, *view);
  if (!spec.commands.empty() && enquiry_.tabs.size() > 1) area.buttons(commandRow(spec.commands) + '|');
  bindCommands(spec.commands);
  bindSearch(tab);
}

// What is typed or chosen first, and the button that searches; then the ways to look at it, and the boxes. Lines are
// filled as far as the display allows.
void EnquiryScreen::placeInputs(Panel& area, Tab& tab) {
  const int room = enquiry_screen_detail::roomOf(*this);
  std::vector<std::string_view> views;
  for (const auto& view : tab.views)
    views.push_back(view->spec->grid.name);
  enquiry_screen_detail::Lines lines(enquiry_.side ? room * 3 / 4 : room, views);
  const auto button = [&](std::string_view name) { lines.add(name, command(name).sizeHint().width() + kGap); };
  int second = 0;
  for (const auto& [criterion, input] : tab.inputs) {
    if (enquiry_screen_detail::isBox(criterion->asks)) {
      second += enquiry_screen_detail::widthOf(*input);
      continue;
    }
    lines.add(criterion->name, enquiry_screen_detail::widthOf(*input), criterion->views);
    if (criterion->asks == Asks::To) button(tab.spec->period);
  }
  for (const auto& view : tab.views)
    if (view->mode) second += enquiry_screen_detail::widthOf(*view->mode);
  if (!tab.spec->search.empty()) button(tab.spec->search);
  if (!lines.hasRoom(second)) lines.next();
  for (const auto& view : tab.views)
    if (view->mode) lines.add(view->mode->spec().name, enquiry_screen_detail::widthOf(*view->mode));
  for (const auto& [criterion, input] : tab.inputs)
    if (enquiry_screen_detail::isBox(criterion->asks))
      lines.add(criterion->name, enquiry_screen_detail::widthOf(*input));
  for (const std::string& line : lines.all())
    area.row(line);
}

void EnquiryScreen::buildView(Panel area, Tab& tab, View& view) {
  const EnquiryView& spec = *view.spec;
  auto inside = area.area(view.area);
  if (spec.beside) {
    view.beside = spec.beside();
    auto [left, right] = inside.columns(2, 5);
    left.grid(spec.grid.name);
    right.widget(view.beside, 1);
  } else {
    inside.grid(spec.grid.name, enquiry_screen_detail::kListHeight);
  }
  if (spec.page) {
    view.beside = spec.page();
    view.list->standBehind(view.beside);
  }
  buildBelow(inside, view);
  if (spec.foot.text) {
    view.foot = new QLabel;
    view.foot->setObjectName(qs(spec.foot.name));
    view.foot->setWordWrap(true);  // sums of many kinds take a second line, they do not widen the window
    inside.widget(view.foot);
  }
  if (spec.rowLook) view.list->setRowLook(spec.rowLook);
  if (spec.cellLook) view.list->setCellLook(spec.cellLook);
  if (spec.counts) view.list->setCounts(spec.counts);
  const bool toRows = !spec.leads.view.empty(), toDocument = !spec.leads.document.empty();
  if (toRows || toDocument || !spec.leads.command.empty()) view.list->onActivated([this, &view] { follow(view); });
  if (toRows || toDocument) {
    view.list->addMenuCommand(
        spec.leads.view.empty() ? QStringLiteral("查看单据(Enter)") : QStringLiteral("查看明细(Enter)"),
        [this, &view] { follow(view); });
  }
  view.list->onCurrentChanged([this, &view] { showBelow(view); });
  view.list->onLoaded([this, &view] {
    if (view.foot) view.foot->setText(view.spec->foot.text(*view.list));
    showBelow(view);
  });
  view.list->setHeading([this, &tab, &view] {
    const bool alone = enquiry_.tabs.size() == 1 && tab.views.size() == 1;
    GridHeading heading{windowTitle(), inputsInWords()};
    if (!alone) heading.title += u'-' + qs(view.spec->grid.caption);
    if (!tab.path.empty()) heading.filter += u'　' + tab.wayText->text();
    return heading;
  });
  if (view.mode)
    view.mode->onChanged([this, &tab, &view] {
      tab.path.clear();
      show(tab, view);
    });
}

void EnquiryScreen::buildBelow(Panel area, View& view) {
  std::string switches;
  for (const RowsBelow* spec = view.spec->below; spec; spec = spec->next) {
    Below below{.spec = spec, .list = &grid(spec->grid.name), .mode = nullptr, .text = nullptr, .asked = {}};
    if (!spec->mode.name.empty()) {
      below.mode = &field(spec->mode.name);
      switches += std::string(spec->mode.name) + ' ';
    }
    view.below.push_back(below);
  }
  if (!switches.empty()) area.row(switches + '|');
  for (std::size_t i = 0; i < view.below.size(); ++i) {
    Below& below = view.below[i];
    if (below.spec->says) {
      below.text = new QLabel;
      below.text->setObjectName(QStringLiteral("way_") + qs(below.spec->grid.name));
      area.widget(below.text);
    }
    area.grid(below.spec->grid.name, enquiry_screen_detail::kBelowHeight);
    if (!below.spec->document.empty())
      below.list->onActivated([this, &below] { openDocument(below.list->currentText(below.spec->document)); });
    if (below.mode)
      below.mode->onChanged([this, &view, i] {
        view.belowShown = i;
        showBelow(view);
      });
  }
}

void EnquiryScreen::bindSearch(Tab& tab) {
  const auto whenInSight = [this, &tab] {
    if (!filling_ && &tab == &tabInSight()) search();
  };
  for (const auto& [criterion, input] : tab.inputs) {
    if (criterion->pick) input->onPick(criterion->pick);
    if (criterion->asks == Asks::Key || criterion->asks == Asks::Amount)
      input->onEnter([whenInSight] {
        whenInSight();
        return true;
      });
    else
      input->onChanged(whenInSight);
    if (criterion->asks == Asks::Key && tab.views.size() == 1) tab.shown->list->followKeysOf(input->widget());
  }
  if (!tab.spec->search.empty()) {
    on(command(tab.spec->search), whenInSight);
    // Where nothing is confirmed, the key that confirms searches too.
    const bool confirms = std::ranges::any_of(commandSpecs, [](const auto& each) { return each.key == "F5"; });
    if (!confirms) addKey(command(tab.spec->search), "F5");
  }
  Field* from = fieldOf(tab, Asks::From);
  Field* to = fieldOf(tab, Asks::To);
  if (from && to) addPeriodMenu(command(tab.spec->period), *from, *to, whenInSight);
}

void EnquiryScreen::bindCommands(std::span<const EnquiryCommand> described) {
  for (const EnquiryCommand& each : described) {
    if (!each.rule && !each.whole && each.opens.empty()) continue;
    QPushButton& button = command(each.name);
    on(button, [this, &each] { run(each); });
    if (!each.rule) continue;  // what works on a row is in the list's menu too
    if (!each.preview.name.empty()) on(command(each.preview.name), [this, &each] { previewRule(each); });
    for (const auto& tab : tabs_) {
      if (!std::ranges::any_of(tab->spec->commands, [&](const auto& own) { return &own == &each; }) &&
          described.data() != enquiry_.commands.data())
        continue;
      for (const auto& view : tab->views)
        if (holds(each.views, view->spec->grid.name))
          view->list->addMenuCommand(button.text(), [&button] {
            if (button.isEnabled()) button.click();
          });
    }
  }
}

Field* EnquiryScreen::fieldOf(const Tab& tab, Asks asks) const {
  const auto found = std::ranges::find_if(tab.inputs, [&](const auto& input) { return input.first->asks == asks; });
  return found == tab.inputs.end() ? nullptr : found->second;
}

void EnquiryScreen::fillInputs(Tab& tab, bool first) {
  for (const auto& [criterion, input] : tab.inputs) {
    if (input->spec().kind == FieldKind::Combo) {
      std::vector<ListItem> items;
      if (criterion->items)
        items = criterion->items();
      else if (criterion->asks == Asks::Warehouse)
        items = fillSeenWarehouses();
      else if (criterion->asks == Asks::Employee)
        items = fillEmployees({}, QStringLiteral("所有经办人"));
      else if (criterion->asks == Asks::Comparison)
        items = enquiry_screen_detail::comparisons();
      input->setItems(items, !first);
    } else if (first && enquiry_screen_detail::isBox(criterion->asks)) {
      input->setChecked(criterion->on);
    } else if (criterion->asks == Asks::Day) {
      if (first || input->text() == tab.proposed.to) input->setText((tab.proposed = today()).to);
    } else if (first && !enquiry_screen_detail::isPeriod(criterion->asks)) {
      input->clear();
      if (criterion->asks == Asks::Amount && criterion->amount != 0) input->setNumber(criterion->amount);
    }
  }
  firstPeriod(tab, first);
}

// A period that the operator left as it was proposed moves on with the days; one of his own stays.
void EnquiryScreen::firstPeriod(Tab& tab, bool first) {
  Field* from = fieldOf(tab, Asks::From);
  Field* to = fieldOf(tab, Asks::To);
  if (!from || !to) return;
  if (!first && tab.proposed != Period{from->text(), to->text()}) return;
  switch (tab.spec->first.value_or(enquiry_.first)) {
    case FirstPeriod::MonthToToday:
      tab.proposed = monthToToday();
      break;
    case FirstPeriod::WholeMonth:
      tab.proposed = monthAgo(0);
      break;
    case FirstPeriod::Today:
      tab.proposed = today();
      break;
    case FirstPeriod::YearToToday:
      tab.proposed = yearToToday();
      break;
    case FirstPeriod::LastTwelveMonths:
      tab.proposed = {monthAgo(11).from, monthAgo(0).to};
      break;
    case FirstPeriod::UntilToday:
      tab.proposed = {allTime().from, today().to};
      break;
    case FirstPeriod::AllTime:
      tab.proposed = allTime();
      break;
  }
  from->setText(tab.proposed.from);
  to->setText(tab.proposed.to);
  tab.proposed = {from->text(), to->text()};  // as months, where it asks for months
}

void EnquiryScreen::resetInputs() {
  filling_ = true;
  for (auto& tab : tabs_)
    fillInputs(*tab, true);
  filling_ = false;
}

void EnquiryScreen::activate() {
  readRights();
  filling_ = true;
  for (auto& tab : tabs_) {
    fillInputs(*tab, !opened_);
    tab->path.clear();
    for (auto& view : tab->views)
      view->asked.reset();
    show(*tab, opened_ ? *tab->shown : *tab->views.front());
  }
  opened_ = true;
  filling_ = false;
  if (viewInSight().spec->chart.first && !viewInSight().chart) showChart(viewInSight(), true);
  if (side_)
    side_->loadQuestion(enquiry_.side->source.ask({}));  // its current row loads the rest
  else
    load(viewInSight());
}

void EnquiryScreen::done(int result) {
  for (Grid* each : grids())
    each->stopLoading();
  Screen::done(result);
}

// Esc: what takes long is stopped first; then back to the row that was followed, and out.
void EnquiryScreen::reject() {
  Grid& list = shown();
  if (list.showsLoading()) return list.stopLoading();
  if (!goBack()) Screen::reject();
}

void EnquiryScreen::closeEvent(QCloseEvent* event) {
  for (auto& tab : tabs_)
    tab->path.clear();
  shown().stopLoading();
  Screen::closeEvent(event);
}

}  // namespace jxc::ui
