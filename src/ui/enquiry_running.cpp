// What an enquiry screen does once it stands: asks, shows, follows a row and comes back, runs commands.
#include "core/archive_look.h"
#include "core/comparison.h"
#include "core/rights.h"
#include "core/text.h"
#include "ui/chart.h"
#include "ui/display.h"
#include "ui/enquiry_parts.h"
#include "ui/grid_output.h"

#include <QBoxLayout>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>

#include <algorithm>

namespace jxc::ui {
namespace enquiry_running_detail {

QString chosen(const Field& input) {
  const QString key = input.key();
  return key == QStringView(allKey) ? QString() : key;
}

/// Whether a list asks for it, of this operator.
bool isAsked(const Criterion& criterion, const EnquiryView& view) {
  if (criterion.asks == Asks::Comparison && view.compares.empty()) return false;
  return enquiry_screen_detail::holds(criterion.views, view.grid.name) && hasRight(criterion.right);
}

/// Whether an input narrows the answer, for the words that say what to change.
bool restricts(const Criterion& criterion, const Field& input) {
  if (enquiry_screen_detail::isPeriod(criterion.asks)) return false;  // said by itself
  if (enquiry_screen_detail::isBox(criterion.asks)) return criterion.asks == Asks::Box && input.isChecked();
  if (criterion.asks == Asks::Key) return !input.isEmpty();
  if (criterion.asks == Asks::Day || criterion.asks == Asks::Order || criterion.asks == Asks::Amount ||
      criterion.asks == Asks::Comparison)
    return false;
  return !chosen(input).isEmpty();
}

}  // namespace enquiry_running_detail

using enquiry_running_detail::isAsked;
using enquiry_screen_detail::holds;

EnquiryScreen::Tab& EnquiryScreen::tabInSight() const {
  const int page = pages_ ? pages_->currentIndex() : 0;
  return *tabs_[static_cast<std::size_t>(std::max(0, page))];
}

EnquiryScreen::View& EnquiryScreen::viewInSight() const {
  return *tabInSight().shown;
}

Grid& EnquiryScreen::shown() const {
  return *viewInSight().list;
}

Criteria EnquiryScreen::criteria() const {
  return criteriaOf(tabInSight());
}

std::pair<Criteria, QString> EnquiryScreen::criteriaOfRow() const {
  std::pair<Criteria, QString> result{criteria(), {}};
  const Leads& leads = viewInSight().spec->leads;
  const auto row = shown().current();
  if (!row || !leads.narrow) return result;
  leads.narrow(result.first, *row);
  if (!leads.says.empty()) result.second = row->text(leads.says);
  return result;
}

Criteria EnquiryScreen::criteriaOf(const Tab& tab) const {
  Criteria result;
  for (const auto& [criterion, input] : tab.inputs) {
    if (!isAsked(*criterion, *tab.shown->spec)) continue;
    switch (criterion->asks) {
      case Asks::From:
        result.from = input->text();
        break;
      case Asks::To:
      case Asks::Day:
        result.to = input->text();
        break;
      case Asks::Warehouse:
        result.warehouse = enquiry_running_detail::chosen(*input);
        break;
      case Asks::GoodsClass:
        result.goodsClass = enquiry_running_detail::chosen(*input);
        break;
      case Asks::Partner:
        result.partner = input->isEmpty() ? QString() : enquiry_running_detail::chosen(*input);
        break;
      case Asks::Employee:
        result.employee = enquiry_running_detail::chosen(*input);
        break;
      case Asks::Account:
        result.account = enquiry_running_detail::chosen(*input);
        break;
      case Asks::Key:
        result.key = input->trimmed();
        break;
      case Asks::Exact:
        result.exact = input->isChecked();
        break;
      case Asks::Kind:
        result.kind = enquiry_running_detail::chosen(*input);
        break;
      case Asks::Order:
        result.order = enquiry_running_detail::chosen(*input);
        break;
      case Asks::Descending:
        result.descending = input->isChecked();
        break;
      case Asks::Amount:
        result.amount = input->number();
        break;
      case Asks::Comparison:
        result.compare = input->key() == enquiry_screen_detail::kPeriodBefore ? CompareWith::PeriodBefore
                         : input->key() == enquiry_screen_detail::kLastYear   ? CompareWith::LastYear
                                                                              : CompareWith::Nothing;
        break;
      case Asks::Box:
        if (input->isChecked()) result.boxes |= criterion->box;
        break;
    }
  }
  complete(result);
  if (side_)
    if (const auto row = side_->current()) enquiry_.side->narrow(result, *row);
  for (const Step& step : tab.path)
    step.from->spec->leads.narrow(result, step.rows[step.row]);
  return result;
}

void EnquiryScreen::search() {
  if (checkFields()) load(viewInSight());
}

void EnquiryScreen::load(View& view) {
  if (side_ && !side_->current()) return view.list->clearRows();
  const Criteria now = criteriaOf(*view.tab);
  view.asked = now;
  for (Below& below : view.below)
    below.asked.reset();
  view.list->setEmptyText(whatToChange(*view.tab, view));
  showComparison(view, now.compare);
  const EnquiryView& spec = *view.spec;
  if (now.compare == CompareWith::Nothing) return view.list->loadQuestion(spec.source.ask(now));
  const bool byTime = spec.chart.byTime && spec.chart.label == spec.grid.idField;
  view.list->loadQuestion(
      comparedQuestion(spec.source, now, {spec.grid.idField, byTime, {spec.compares.begin(), spec.compares.end()}}));
}

/// Columns of an earlier period are there for nobody while there is none, nor for who may not see their figure.
void EnquiryScreen::showComparison(View& view, CompareWith with) {
  for (const std::string_view figure : view.spec->compares) {
    const std::string earlier = earlierField(figure), change = changeField(figure);
    const auto column = std::ranges::find(view.spec->grid.columns, figure, &ColumnSpec::field);
    if (column == view.spec->grid.columns.end()) continue;  // figures are named for several lists
    const bool allowed = with != CompareWith::Nothing && hasRight(column->right);
    for (const std::string& field : {earlier, change})
      if (view.list->isColumnAllowed(field) != allowed) view.list->setColumnAllowed(field, allowed);
    const QString when = with == CompareWith::LastYear ? QStringLiteral("去年") : QStringLiteral("上期");
    view.list->setCaption(earlier, when + qs(column->caption));
  }
}

QString EnquiryScreen::whatToChange(const Tab& tab, const View& view) const {
  const QString nothing =
      view.spec->grid.empty.empty() ? QStringLiteral("没有符合条件的记录") : qs(view.spec->grid.empty);
  QStringList conditions;
  const Field* from = fieldOf(tab, Asks::From);
  const Field* to = fieldOf(tab, Asks::To);
  const bool ofBelow = std::ranges::any_of(tab.inputs, [](const auto& input) { return input.first->ofBelow; });
  if (from && to && !ofBelow) {
    if (from->text() > to->text()) return nothing + QStringLiteral("\n起始日期晚于截止日期，请改正后重新查询");
    if (Period{from->text(), to->text()} != allTime())
      conditions << QStringLiteral("%1 至 %2").arg(from->text(), to->text());
  }
  for (const auto& [criterion, input] : tab.inputs) {
    if (!input->isVisible() || !enquiry_running_detail::restricts(*criterion, *input)) continue;
    conditions << (criterion->asks == Asks::Box ? qs(criterion->label) : qs(criterion->label) + input->trimmed());
  }
  if (!tab.path.empty()) conditions << tab.wayText->text();
  if (conditions.isEmpty()) return nothing;
  return nothing + QStringLiteral("\n现在的条件：") + conditions.join(QStringLiteral("，")) +
         QStringLiteral("\n放宽其中一项再查询");
}

void EnquiryScreen::show(Tab& tab, View& view) {
  const QWidget* focused = isVisible() ? focusWidget() : nullptr;
  tab.shown = &view;
  for (auto& each : tab.views) {
    each->area->setVisible(each.get() == &view);
    if (each->mode) each->mode->setChecked(each.get() == &view);
  }
  for (const auto& [criterion, input] : tab.inputs) {
    const bool asked = isAsked(*criterion, *view.spec);
    input->setVisible(asked);
    if (criterion->asks == Asks::To) command(tab.spec->period).setVisible(asked);
  }
  QStringList way;
  for (const Step& step : tab.path) {
    const Leads& leads = step.from->spec->leads;
    way << qs(step.from->spec->mode.caption.empty() ? step.from->spec->grid.caption : step.from->spec->mode.caption);
    if (!leads.says.empty()) way.back() += u"："_qs + step.rows[step.row].text(leads.says);
  }
  tab.wayText->setText(way.join(QStringLiteral(" › ")));
  tab.way->setVisible(!way.isEmpty());
  command(enquiry_.leave).setText(way.isEmpty() ? QStringLiteral("退出(Esc)") : QStringLiteral("返回(Esc)"));
  showCommands();
  if (filling_ || &tab != &tabInSight()) return;
  if (!view.asked || *view.asked != criteriaOf(tab)) load(view);
  if (view.spec->chart.first && !view.chart) showChart(view, true);
  // What had the focus may be out of sight now; left alone, it would go to whatever stands next, a button that prints.
  if (focused && !focused->isVisible()) focusValues(view);
}

void EnquiryScreen::showView(std::string_view name) {
  for (std::size_t i = 0; i < tabs_.size(); ++i)
    for (auto& view : tabs_[i]->views) {
      if (view->spec->grid.name != name) continue;
      if (pages_) pages_->setCurrentIndex(static_cast<int>(i));
      tabs_[i]->path.clear();
      show(*tabs_[i], *view);
    }
}

void EnquiryScreen::follow() {
  follow(viewInSight());
}

void EnquiryScreen::follow(View& view) {
  const auto row = view.list->current();
  if (!row) return;
  const Leads& leads = view.spec->leads;
  if (!leads.command.empty()) {
    QPushButton& button = command(leads.command);
    return button.isVisible() && button.isEnabled() ? button.click() : void();
  }
  if (!leads.document.empty()) return openDocument(row->text(leads.document));
  Tab& tab = *view.tab;
  const auto target =
      std::ranges::find_if(tab.views, [&](const auto& each) { return each->spec->grid.name == leads.view; });
  if (target == tab.views.end()) return;
  tab.path.push_back({&view, view.list->rows(), row->index()});
  (*target)->list->clearRows();  // others than those that were there
  (*target)->asked.reset();
  show(tab, **target);
  (*target)->list->focusRows();
}

bool EnquiryScreen::goBack() {
  Tab& tab = tabInSight();
  if (tab.path.empty()) return false;
  View& before = *tab.path.back().from;
  tab.path.pop_back();
  show(tab, before);
  focusValues(before);
  return true;
}

void EnquiryScreen::showBelow(View& view) {
  const auto row = view.list->current();
  if (view.beside) view.beside->show(row ? &*row : nullptr, criteriaOf(*view.tab));
  if (view.below.empty()) return;
  for (std::size_t i = 0; i < view.below.size(); ++i) {
    view.below[i].list->setVisible(i == view.belowShown);
    if (view.below[i].mode) view.below[i].mode->setChecked(i == view.belowShown);
    if (view.below[i].text) view.below[i].text->setVisible(i == view.belowShown);
  }
  Below& below = view.below[view.belowShown];
  if (below.text) below.text->setText(row ? below.spec->says(*row) : QString());
  if (!row || (below.spec->has && !below.spec->has(*row))) {
    below.asked.reset();
    return below.list->clearRows();
  }
  Criteria wanted = criteriaOf(*view.tab);
  below.spec->narrow(wanted, *row);
  if (below.asked == wanted) return;
  below.asked = wanted;
  below.list->loadQuestion(below.spec->source.ask(wanted));
}

void EnquiryScreen::openDocument(const QString& number) {
  if (!number.isEmpty() && enquiryServices().openDocument) enquiryServices().openDocument(number, *this);
}

// The chart takes the place of its list: the same rows, the same current one.
void EnquiryScreen::showChart(View& view, bool on) {
  if (view.spec->chart.label.empty()) return;
  if (!view.chart) {
    view.chart = new Chart(*view.list, view.spec->chart, view.area);
    view.chart->onOpen([this, &view] { follow(view); });
    auto* layout = static_cast<QBoxLayout*>(view.area->layout());
    layout->insertWidget(layout->indexOf(view.list), view.chart, enquiry_screen_detail::kListHeight);
    setTabOrder(view.list->view(), view.chart->focusProxy());  // it came after the rest, and is read where its list is
  }
  view.list->setVisible(!on);
  view.chart->setVisible(on);
  showCommands();
}

void EnquiryScreen::focusValues(View& view) {
  if (view.list->isHidden())
    view.chart->focusValues();
  else
    view.list->focusRows();
}

bool EnquiryScreen::onlyLooks(const CommandSpec& command) const {
  const auto described = [&](std::span<const EnquiryCommand> commands) {
    return std::ranges::any_of(commands, [&](const EnquiryCommand& each) {
      return each.name == command.name || each.preview.name == command.name;
    });
  };
  return Screen::onlyLooks(command) ||
         (!described(enquiry_.commands) &&
          std::ranges::none_of(enquiry_.tabs, [&](const EnquiryTab& tab) { return described(tab.commands); }));
}

void EnquiryScreen::showCommands() {
  const Tab& now = tabInSight();
  const std::string_view list = now.shown->spec->grid.name;
  const auto arrange = [&](const EnquiryCommand& each) {
    const bool allowed = allowed_.at(&each);
    const bool isOn = !each.parameter || strIsTrue(session().*each.parameter);
    const bool seen = isOn && (allowed || each.staysInSight) && (holds(each.views, list) || !each.elsewhere.empty());
    for (const std::string_view name : {each.name, each.preview.name}) {
      if (name.empty()) continue;
      command(name).setVisible(seen);
      command(name).setEnabled(allowed && (!isArchiveInUse() || onlyLooks({.name = name, .caption = each.caption})));
    }
  };
  for (const EnquiryCommand& each : now.spec->commands)
    arrange(each);
  for (const EnquiryCommand& each : enquiry_.commands)
    arrange(each);
  if (std::ranges::any_of(commandSpecs, [](const auto& each) { return each.name == "btn_Chart"; })) {
    auto& button = command("btn_Chart");
    button.setVisible(!now.shown->spec->chart.label.empty());
    const bool drawn = now.shown->list->isHidden();
    button.setText(drawn ? QStringLiteral("列表(Ctrl+T)") : QStringLiteral("图表(Ctrl+T)"));
  }
  placeCommands();
}

int EnquiryScreen::roomOfCommands() {
  return enquiry_screen_detail::roomOf(*this) - command(enquiry_.leave).sizeHint().width() -
         enquiry_screen_detail::kGap;
}

// As many lines as the display makes of them; what another list has takes no room in those of this one.
void EnquiryScreen::placeCommands() {
  auto* lines = static_cast<QBoxLayout*>(lines_->layout());
  const auto boxOf = [lines](int line) {
    if (line == lines->count()) lines->addLayout(new QHBoxLayout);
    return static_cast<QBoxLayout*>(lines->itemAt(line)->layout());
  };
  for (int line = 0; line < lines->count(); ++line)
    while (const QLayoutItem* item = boxOf(line)->takeAt(0))
      delete item;
  const int room = roomOfCommands();
  int line = 0, used = 0;
  for (QPushButton* button : row_) {
    // Before its window was first shown every button is hidden; these were told to be.
    if (button->isHidden() && button->testAttribute(Qt::WA_WState_ExplicitShowHide)) continue;
    const int width = button->sizeHint().width() + enquiry_screen_detail::kGap;
    if (used > 0 && used + width > room) {
      boxOf(line++)->addStretch(1);
      used = 0;
    }
    boxOf(line)->addWidget(button);
    used += width;
  }
  boxOf(line)->addStretch(1);
  boxOf(line)->addWidget(&command(enquiry_.leave));
}

void EnquiryScreen::readRights() {
  allowed_.clear();
  const auto read = [this](std::span<const EnquiryCommand> described) {
    for (const EnquiryCommand& each : described)
      allowed_[&each] = hasRight(each.right);
  };
  read(enquiry_.commands);
  for (const EnquiryTab& tab : enquiry_.tabs)
    read(tab.commands);
}

void EnquiryScreen::run(const EnquiryCommand& described) {
  const View& view = viewInSight();
  if (!holds(described.views, view.spec->grid.name)) return prompt().notice(qs(described.elsewhere));
  if (!described.opens.empty()) {
    openScreen(described.opens);
    filling_ = true;
    for (auto& tab : tabs_)
      fillInputs(*tab, false);
    filling_ = false;
    return rowsChanged();
  }
  if (described.whole) {
    if (described.whole(criteria(), prompt())) rowsChanged();
  } else if (const auto row = view.list->current(); row && described.rule(*row, prompt())) {
    rowsChanged();
  }
}

void EnquiryScreen::rowsChanged() {
  for (auto& tab : tabs_)
    for (auto& view : tab->views)
      view->asked.reset();
  load(viewInSight());
}

void EnquiryScreen::previewRule(const EnquiryCommand& described) {
  const View& view = viewInSight();
  if (!holds(described.views, view.spec->grid.name)) return prompt().notice(qs(described.elsewhere));
  const auto row = view.list->current();
  if (!row || !enquiryServices().preview) return;
  const QString number = row->text(described.preview.number);
  enquiryServices().preview(qs(described.preview.doing) + number, number,
                            [&](Prompt& agreeing) { return described.rule(*row, agreeing); });
}

void EnquiryScreen::print() {
  View& view = viewInSight();
  view.list->waitLoaded();
  if (view.chart && view.chart->isVisible()) return view.chart->print();
  if (view.spec->paper.empty() || !enquiryServices().printList) return printGrid(*view.list);
  enquiryServices().printList(*view.spec, *view.list, criteriaOf(*view.tab), *this);
}

void EnquiryScreen::exportList() {
  View& view = viewInSight();
  if (view.chart && view.chart->isVisible()) return view.chart->save();
  const auto sheet = view.beside ? view.beside->sheet() : std::nullopt;
  if (sheet) return exportSheet(*sheet, view.list->heading().title, this);
  Grid* list = gridInSight();
  exportGrid(list ? *list : *view.list);
}

}  // namespace jxc::ui
