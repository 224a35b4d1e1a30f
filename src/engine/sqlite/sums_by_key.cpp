#include "engine/sqlite/sums_by_key.h"

#include "engine/grouped_sums.h"
#include "engine/number_text.h"
#include "engine/sqlite/native_cell.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string_view>
#include <utility>

namespace jxc::sqlite {
namespace sums_by_key_detail {

constexpr std::size_t kFirstSlots = 1024;

template <class Number>
void append(std::string& key, Number number) {
  key.append(reinterpret_cast<const char*>(&number), sizeof number);
}

}  // namespace sums_by_key_detail

SumsByKey::SumsByKey(std::shared_ptr<const ColumnNames> columns, int keys)
    : RowTaker(std::move(columns)),
      keys_(keys),
      sumCount_(static_cast<int>(columns_->names().size()) - keys),
      slots_(sums_by_key_detail::kFirstSlots),
      cells_(std::vector<std::string>(columns_->names().begin(), columns_->names().begin() + keys)) {}

void SumsByKey::readKey(sqlite3_value** cells) {
  using namespace sums_by_key_detail;
  key_.clear();
  for (int column = 0; column < keys_; ++column) {
    const NativeCell cell(cells[column]);
    const int kind = cell.kind();
    key_ += static_cast<char>(kind);
    switch (kind) {
      case SQLITE_NULL:
        break;
      case SQLITE_INTEGER:
        append(key_, cell.integer());
        break;
      case SQLITE_FLOAT:
        append(key_, cell.real());
        break;
      default: {
        const std::string_view text = cell.utf8();
        append(key_, static_cast<std::uint32_t>(text.size()));
        key_ += text;
      }
    }
  }
}

/// That of the present key, or the free one where it belongs.
SumsByKey::Slot& SumsByKey::slotOf(std::size_t hash) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  while (slots_[at].group >= 0 && (slots_[at].hash != hash || all_[static_cast<std::size_t>(slots_[at].group)] != key_))
    at = (at + 1) & mask;
  return slots_[at];
}

void SumsByKey::addGroup(Slot& slot, std::size_t hash, sqlite3_value** cells) {
  slot = {hash, static_cast<int>(all_.size())};
  all_.push_back(key_);
  sums_.resize(sums_.size() + static_cast<std::size_t>(sumCount_));
  for (int column = 0; column < keys_; ++column)
    addCell(cells_, NativeCell(cells[column]));
  if (all_.size() * 2 < slots_.size()) return;
  const std::vector<Slot> before = std::exchange(slots_, std::vector<Slot>(slots_.size() * 4));
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& each : before) {
    if (each.group < 0) continue;
    std::size_t at = each.hash & mask;
    while (slots_[at].group >= 0)
      at = (at + 1) & mask;
    slots_[at] = each;
  }
}

void SumsByKey::add(sqlite3_value** cells) {
  readKey(cells);
  const std::size_t hash = std::hash<std::string_view>()(key_);
  Slot& slot = slotOf(hash);
  std::size_t first = static_cast<std::size_t>(slot.group) * static_cast<std::size_t>(sumCount_);
  if (slot.group < 0) {
    first = sums_.size();
    addGroup(slot, hash, cells);
  }
  for (int i = 0; i < sumCount_; ++i) {
    Sum& sum = sums_[first + static_cast<std::size_t>(i)];
    const double number = sqlite3_value_double(cells[keys_ + i]);
    sum.plain += number;
    sum.withoutSign += std::abs(number);
  }
}

RowSet SumsByKey::rows() const {
  std::vector<std::string> names(columns_->names().begin(), columns_->names().begin() + keys_);
  for (int i = 0; i < sumCount_; ++i) {
    const std::string& name = columns_->names()[static_cast<std::size_t>(keys_) + static_cast<std::size_t>(i)];
    names.push_back(name);
    names.push_back("abs_" + name);
  }
  RowSet rows(std::move(names));
  auto sum = sums_.begin();
  for (int row = 0; row < cells_.rowCount(); ++row) {
    for (int column = 0; column < keys_; ++column)
      copyCell(rows, cells_, row, column);
    for (int i = 0; i < sumCount_; ++i, ++sum) {
      rows.addReal(toSixDecimals(static_cast<double>(sum->plain)));
      rows.addReal(toSixDecimals(static_cast<double>(sum->withoutSign)));
    }
  }
  return rows;
}

}  // namespace jxc::sqlite
