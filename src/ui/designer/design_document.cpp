#include "ui/designer/design_document.h"

#include "platform/report/template_file.h"
#include "ui/designer/design_columns.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace jxc::ui {

namespace design_document_detail {

constexpr std::size_t kMostSteps = 200;  // a template is some kilobytes

/// Where a band stands on paper; bands of one kind keep their order in the file.
int placeOf(const report::Template& t, const report::Band& band) {
  using report::BandKind;
  const int groups = static_cast<int>(t.groups.size());
  switch (band.kind) {
    case BandKind::ReportTitle:
      return 0;
    case BandKind::PageHeader:
      return 1;
    case BandKind::ColumnHeader:
      return 2;
    case BandKind::GroupHeader:
      return 3 + band.group;
    case BandKind::MasterData:
      return 3 + groups;
    case BandKind::GroupFooter:
      return 4 + groups + (groups - band.group);
    case BandKind::Summary:
      return 1000;
    case BandKind::PageFooter:
      return 1001;
    case BandKind::Overlay:
      return 1002;
  }
  return 1003;
}

bool isOfGroup(const report::Band& band) {
  return band.kind == report::BandKind::GroupHeader || band.kind == report::BandKind::GroupFooter;
}

/// A band goes with its objects; a group goes with its last band.
void dropUnusedGroups(report::Template& t) {
  for (int group = static_cast<int>(t.groups.size()) - 1; group >= 0; --group) {
    const bool used = std::ranges::any_of(t.bands, [&](const auto& b) { return isOfGroup(b) && b.group == group; });
    if (used) continue;
    t.groups.erase(t.groups.begin() + group);
    for (auto& band : t.bands)
      if (isOfGroup(band) && band.group > group) --band.group;
  }
}

void holdInside(const report::Template& t, const report::Band& band, report::Item& item) {
  const double width = bandWidth(t, band);
  item.width = std::min(item.width, width);
  item.x = std::clamp(item.x, 0.0, std::max(0.0, width - item.width));
  item.y = std::clamp(item.y, 0.0, std::max(0.0, band.height - item.height));
}

}  // namespace design_document_detail

double toHundredth(double millimetres) {
  return std::round(millimetres * 100) / 100;
}

double bandWidth(const report::Template& t, const report::Band& band) {
  using namespace design_document_detail;
  using report::BandKind;
  const bool inColumn = band.kind == BandKind::MasterData || band.kind == BandKind::ColumnHeader || isOfGroup(band);
  return inColumn ? t.page.columnWidth() : t.page.bodyWidth();
}

void DesignDocument::start(report::Template t, QString path) {
  state_ = {std::move(t), {}, -1};
  saved_ = state_.design;
  path_ = std::move(path);
  undo_.clear();
  redo_.clear();
  joinKey_.clear();
  base_.reset();
  changed();
}

void DesignDocument::save(const QString& path, bool force) {
  report::saveTemplate(state_.design, path, force ? report::SaveMode::Force : report::SaveMode::Replace);
  path_ = path;
  saved_ = state_.design;
  changed();
}

bool DesignDocument::isChosen(ItemRef ref) const {
  return std::ranges::find(state_.chosen, ref) != state_.chosen.end();
}

void DesignDocument::choose(std::vector<ItemRef> items) {
  state_.chosen = std::move(items);
  if (!state_.chosen.empty()) state_.band = state_.chosen.back().band;
  joinKey_.clear();
  changed();
}

void DesignDocument::toggle(ItemRef item) {
  auto items = state_.chosen;
  if (const auto found = std::ranges::find(items, item); found != items.end())
    items.erase(found);
  else
    items.push_back(item);
  choose(std::move(items));
}

void DesignDocument::chooseBand(int band) {
  state_.chosen.clear();
  state_.band = band;
  joinKey_.clear();
  changed();
}

void DesignDocument::chooseAll() {
  std::vector<ItemRef> all;
  for (const int band : bandsInOrder())
    for (int item = 0; item < static_cast<int>(state_.design.bands[band].items.size()); ++item)
      all.push_back({band, item});
  choose(std::move(all));
}

void DesignDocument::chooseNext(int step) {
  std::vector<ItemRef> all;
  for (const int band : bandsInOrder()) {
    std::vector<ItemRef> here;
    for (int item = 0; item < static_cast<int>(state_.design.bands[band].items.size()); ++item)
      here.push_back({band, item});
    std::ranges::stable_sort(here, {}, [&](ItemRef ref) { return std::pair(item(ref).y, item(ref).x); });
    all.insert(all.end(), here.begin(), here.end());
  }
  if (all.empty()) return;
  const int count = static_cast<int>(all.size());
  int at = step > 0 ? -1 : count;
  if (!state_.chosen.empty()) at = static_cast<int>(std::ranges::find(all, state_.chosen.back()) - all.begin());
  choose({all[(at + step + count) % count]});
}

const report::Item& DesignDocument::item(ItemRef ref) const {
  return state_.design.bands.at(ref.band).items.at(ref.item);
}

int DesignDocument::bandForNew() const {
  return state_.band >= 0 || state_.design.bands.empty() ? state_.band : bandsInOrder().front();
}

std::vector<int> DesignDocument::bandsInOrder() const {
  using namespace design_document_detail;
  std::vector<int> order(state_.design.bands.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::stable_sort(order, {}, [&](int band) { return placeOf(state_.design, state_.design.bands[band]); });
  return order;
}

void DesignDocument::push(const QString& what, State before) {
  using namespace design_document_detail;
  undo_.push_back({what, std::move(before)});
  if (undo_.size() > kMostSteps) undo_.erase(undo_.begin());
  redo_.clear();
}

void DesignDocument::edit(const QString& what, const Edit& change, const QString& joinKey) {
  State before = state_;
  change(state_.design);
  if (state_.design == before.design) return;
  if (joinKey.isEmpty() || joinKey != joinKey_) push(what, std::move(before));
  joinKey_ = joinKey;
  dropDangling();
  changed();
}

void DesignDocument::beginGesture() {
  base_ = state_;
}

void DesignDocument::gesture(const Edit& change) {
  if (!base_) return;
  state_ = *base_;
  change(state_.design);
  changed();
}

void DesignDocument::endGesture(const QString& what) {
  if (!base_) return;
  State before = std::move(*base_);
  base_.reset();
  joinKey_.clear();
  if (!(before.design == state_.design)) push(what, std::move(before));
  changed();
}

void DesignDocument::cancelGesture() {
  if (!base_) return;
  state_ = std::move(*base_);
  base_.reset();
  changed();
}

void DesignDocument::undo() {
  if (undo_.empty()) return;
  redo_.push_back({undo_.back().what, std::move(state_)});
  state_ = std::move(undo_.back().state);
  undo_.pop_back();
  joinKey_.clear();
  changed();
}

void DesignDocument::redo() {
  if (redo_.empty()) return;
  undo_.push_back({redo_.back().what, std::move(state_)});
  state_ = std::move(redo_.back().state);
  redo_.pop_back();
  joinKey_.clear();
  changed();
}

void DesignDocument::add(int band, report::Item item) {
  using namespace design_document_detail;
  if (band < 0 || band >= static_cast<int>(state_.design.bands.size())) return;
  edit(u"添加"_qs + report::itemKindLabel(item.kind).toString(), [&](report::Template& t) {
    auto& home = t.bands[band];
    home.height = std::max(home.height, std::min(item.height, 300.0));
    holdInside(t, home, item);
    home.items.push_back(std::move(item));
  });
  choose({{band, static_cast<int>(state_.design.bands[band].items.size()) - 1}});
}

void DesignDocument::removeChosen() {
  if (state_.chosen.empty()) {
    if (state_.band >= 0) removeBand(state_.band);
    return;
  }
  auto doomed = state_.chosen;
  std::ranges::sort(doomed, std::greater());
  const int band = state_.band;
  edit(QStringLiteral("删除"), [&](report::Template& t) {
    for (const ItemRef ref : doomed)
      t.bands[ref.band].items.erase(t.bands[ref.band].items.begin() + ref.item);
  });
  chooseBand(band);
}

void DesignDocument::editChosen(const QString& what, const std::function<void(report::Item&)>& change,
                                const QString& joinKey) {
  edit(
      what,
      [&](report::Template& t) {
        for (const ItemRef ref : state_.chosen)
          change(t.bands[ref.band].items[ref.item]);
      },
      joinKey);
}

void DesignDocument::moveBy(double dx, double dy, const QString& joinKey) {
  editChosen(
      QStringLiteral("移动"),
      [&](report::Item& item) {
        item.x = toHundredth(std::max(0.0, item.x + dx));
        item.y = toHundredth(std::max(0.0, item.y + dy));
      },
      joinKey);
}

void DesignDocument::growBy(double dx, double dy, const QString& joinKey) {
  editChosen(
      QStringLiteral("改变大小"),
      [&](report::Item& item) {
        item.width = toHundredth(std::max(0.0, item.width + dx));
        item.height = toHundredth(std::max(0.0, item.height + dy));
      },
      joinKey);
}

void DesignDocument::align(Edge edge) {
  if (state_.chosen.empty()) return;
  // One object aligns with its band, several with the one that was chosen last.
  const ItemRef leader = state_.chosen.back();
  report::Item frame = item(leader);
  if (state_.chosen.size() == 1) {
    const auto& band = state_.design.bands[leader.band];
    frame.x = frame.y = 0;
    frame.width = bandWidth(state_.design, band);
    frame.height = band.height;
  }
  editChosen(QStringLiteral("对齐"), [&](report::Item& item) {
    switch (edge) {
      case Edge::Left:
        item.x = frame.x;
        break;
      case Edge::Center:
        item.x = toHundredth(frame.x + (frame.width - item.width) / 2);
        break;
      case Edge::Right:
        item.x = toHundredth(frame.x + frame.width - item.width);
        break;
      case Edge::Top:
        item.y = frame.y;
        break;
      case Edge::Middle:
        item.y = toHundredth(frame.y + (frame.height - item.height) / 2);
        break;
      case Edge::Bottom:
        item.y = toHundredth(frame.y + frame.height - item.height);
        break;
    }
    item.x = std::max(0.0, item.x);
    item.y = std::max(0.0, item.y);
  });
}

void DesignDocument::sameWidth() {
  if (state_.chosen.size() < 2) return;
  const double width = item(state_.chosen.back()).width;
  editChosen(QStringLiteral("等宽"), [width](report::Item& item) { item.width = width; });
}

void DesignDocument::sameHeight() {
  if (state_.chosen.size() < 2) return;
  const double height = item(state_.chosen.back()).height;
  editChosen(QStringLiteral("等高"), [height](report::Item& item) { item.height = height; });
}

void DesignDocument::spread(Qt::Orientation direction) {
  if (state_.chosen.size() < 3) return;
  const bool across = direction == Qt::Horizontal;
  const auto start = [across](const report::Item& i) { return across ? i.x : i.y; };
  const auto length = [across](const report::Item& i) { return across ? i.width : i.height; };
  auto order = state_.chosen;
  std::ranges::stable_sort(order, {}, [&](ItemRef ref) { return start(item(ref)); });
  const double from = start(item(order.front()));
  const double to = start(item(order.back())) + length(item(order.back()));
  double taken = 0;
  for (const ItemRef ref : order)
    taken += length(item(ref));
  const double gap = (to - from - taken) / static_cast<double>(order.size() - 1);
  edit(QStringLiteral("等距"), [&](report::Template& t) {
    double at = from;
    for (const ItemRef ref : order) {
      auto& item = t.bands[ref.band].items[ref.item];
      (across ? item.x : item.y) = toHundredth(std::max(0.0, at));
      at += length(item) + gap;
    }
  });
}

void DesignDocument::reorder(Order order) {
  if (state_.chosen.empty()) return;
  auto picked = state_.chosen;
  std::ranges::sort(picked);
  std::vector<ItemRef> now;
  edit(order == Order::Front ? QStringLiteral("移到最前") : QStringLiteral("移到最后"), [&](report::Template& t) {
    for (int band = 0; band < static_cast<int>(t.bands.size()); ++band) {
      auto& items = t.bands[band].items;
      std::vector<report::Item> moved, rest;
      for (int i = 0; i < static_cast<int>(items.size()); ++i)
        (std::ranges::binary_search(picked, ItemRef{band, i}) ? moved : rest).push_back(std::move(items[i]));
      const int first = order == Order::Front ? static_cast<int>(rest.size()) : 0;
      for (int i = 0; i < static_cast<int>(moved.size()); ++i)
        now.push_back({band, first + i});
      rest.insert(order == Order::Front ? rest.end() : rest.begin(), moved.begin(), moved.end());
      items = std::move(rest);
    }
  });
  choose(std::move(now));
}

void DesignDocument::settle(const std::vector<double>& bandTops) {
  auto& t = state_.design;
  auto& chosen = state_.chosen;
  auto order = chosen;
  std::ranges::sort(order, std::greater());  // removing from behind keeps the earlier numbers
  std::vector<std::pair<int, report::Item>> moved;
  for (const ItemRef ref : order) {
    report::Item item = t.bands[ref.band].items[ref.item];
    const double middle = bandTops[ref.band] + item.y + item.height / 2;
    int home = ref.band;
    for (int band = 0; band < static_cast<int>(t.bands.size()); ++band)
      if (middle >= bandTops[band] && middle < bandTops[band] + t.bands[band].height) home = band;
    if (home == ref.band) continue;
    item.y = toHundredth(std::max(0.0, item.y + bandTops[ref.band] - bandTops[home]));
    t.bands[ref.band].items.erase(t.bands[ref.band].items.begin() + ref.item);
    for (ItemRef& kept : chosen)
      if (kept.band == ref.band && kept.item > ref.item) --kept.item;
    std::erase(chosen, ref);
    moved.emplace_back(home, std::move(item));
  }
  for (auto& [home, item] : moved) {
    t.bands[home].items.push_back(std::move(item));
    chosen.push_back({home, static_cast<int>(t.bands[home].items.size()) - 1});
  }
  for (const ItemRef ref : chosen) {
    auto& item = t.bands[ref.band].items[ref.item];
    item.y = std::max(0.0, item.y);
    item.x = std::max(0.0, item.x);
  }
}

int DesignDocument::chosenColumn() const {
  if (state_.chosen.empty()) return -1;
  const ItemRef leader = state_.chosen.back();
  return hasColumns(state_.design.bands[leader.band]) ? columnOf(state_.design, item(leader)) : -1;
}

bool DesignDocument::isList() const {
  return !columnEdges(state_.design).empty();
}

bool DesignDocument::insertColumn(const report::DetailField& field) {
  const int columns = static_cast<int>(columnEdges(state_.design).size()) - 1;
  const int chosen = chosenColumn();
  const int at = chosen >= 0 ? chosen + 1 : columns;
  bool done = false;
  edit(QStringLiteral("插入列"), [&](report::Template& t) { done = ui::insertColumn(t, at, field); });
  if (!done) return false;
  const auto& bands = state_.design.bands;
  const auto rows = std::ranges::find(bands, report::BandKind::MasterData, &report::Band::kind);
  choose({{static_cast<int>(rows - bands.begin()), static_cast<int>(rows->items.size()) - 1}});
  return true;
}

bool DesignDocument::removeColumn() {
  const int column = chosenColumn();
  if (column < 0) return false;
  bool done = false;
  edit(QStringLiteral("删除列"), [&](report::Template& t) { done = ui::removeColumn(t, column); });
  if (done) choosePage();
  return done;
}

void DesignDocument::addBand(report::BandKind kind) {
  using report::BandKind;
  edit(QStringLiteral("添加带区"), [&](report::Template& t) {
    if (kind == BandKind::GroupHeader || kind == BandKind::GroupFooter) {
      const int group = static_cast<int>(t.groups.size());
      t.groups.push_back({t.fields.empty() ? QString() : QStringLiteral("[%1]").arg(t.fields.front().name)});
      report::addBand(t, BandKind::GroupHeader, 7).group = group;
      report::addBand(t, BandKind::GroupFooter, 7).group = group;
    } else {
      report::addBand(t, kind, kind == BandKind::Overlay ? t.page.pageHeight() - t.page.top - t.page.bottom : 8);
    }
  });
  chooseBand(static_cast<int>(state_.design.bands.size()) - 1);
}

void DesignDocument::removeBand(int band) {
  using namespace design_document_detail;
  if (band < 0 || band >= static_cast<int>(state_.design.bands.size())) return;
  state_.chosen.clear();
  edit(QStringLiteral("删除带区"), [&](report::Template& t) {
    t.bands.erase(t.bands.begin() + band);
    dropUnusedGroups(t);
  });
  choosePage();
}

void DesignDocument::moveBand(int band, int step) {
  const auto order = bandsInOrder();
  const auto at = std::ranges::find(order, band) - order.begin();
  const auto to = at + step;
  if (to < 0 || to >= static_cast<std::ptrdiff_t>(order.size())) return;
  const int other = order[to];
  const auto& bands = state_.design.bands;
  if (bands[other].kind != bands[band].kind || bands[other].group != bands[band].group) return;
  edit(QStringLiteral("移动带区"), [&](report::Template& t) { std::swap(t.bands[band], t.bands[other]); });
  chooseBand(other);
}

QByteArray DesignDocument::copyChosen() const {
  if (state_.chosen.empty()) return {};
  report::Template parcel;
  auto& band = report::addBand(parcel, report::BandKind::MasterData, 1);
  for (const ItemRef ref : state_.chosen)
    band.items.push_back(item(ref));
  return report::templateXml(parcel);
}

bool DesignDocument::paste(const QByteArray& data) {
  using namespace design_document_detail;
  report::Template parcel;
  try {
    parcel = report::parseTemplate(data);
  } catch (const report::TemplateError&) {
    return false;  // something else was copied
  }
  if (parcel.bands.empty() || parcel.bands.front().items.empty() || state_.design.bands.empty()) return false;
  const int band = state_.band >= 0 ? state_.band : bandsInOrder().front();
  std::vector<ItemRef> fresh;
  edit(QStringLiteral("粘贴"), [&](report::Template& t) {
    auto& home = t.bands[band];
    for (report::Item& item : parcel.bands.front().items) {
      // A copy on top of its original would not be seen.
      while (std::ranges::any_of(home.items, [&](const auto& i) { return i.x == item.x && i.y == item.y; })) {
        item.x += 2;
        item.y += 2;
      }
      home.height = std::max(home.height, std::min(item.height, 300.0));
      holdInside(t, home, item);
      home.items.push_back(std::move(item));
      fresh.push_back({band, static_cast<int>(home.items.size()) - 1});
    }
  });
  choose(std::move(fresh));
  return true;
}

void DesignDocument::duplicate() {
  if (const QByteArray parcel = copyChosen(); !parcel.isEmpty()) paste(parcel);
}

void DesignDocument::dropDangling() {
  const auto& bands = state_.design.bands;
  std::erase_if(state_.chosen, [&](ItemRef ref) {
    return ref.band >= static_cast<int>(bands.size()) || ref.item >= static_cast<int>(bands[ref.band].items.size());
  });
  if (state_.band >= static_cast<int>(bands.size())) state_.band = -1;
}

void DesignDocument::changed() {
  for (const auto& hook : changed_)
    hook();
}

}  // namespace jxc::ui
