#include "engine/sqlite/sums_by_key.h"

#include "engine/grouped_sums.h"
#include "engine/number_text.h"
#include "engine/sqlite/native_cell.h"

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

std::vector<std::string> numbered(int columns) {
  std::vector<std::string> names;
  for (int i = 0; i < columns; ++i)
    names.push_back(std::to_string(i));
  return names;
}

}  // namespace sums_by_key_detail

SumsByKey::SumsByKey(sqlite3_stmt* statement, int keys)
    : statement_(statement),
      keys_(keys),
      sumCount_(sqlite3_column_count(statement) - keys),
      slots_(sums_by_key_detail::kFirstSlots),
      cells_(sums_by_key_detail::numbered(keys)) {}

void SumsByKey::readKey() {
  using namespace sums_by_key_detail;
  key_.clear();
  for (int column = 0; column < keys_; ++column) {
    const NativeCell cell(statement_, column);
    key_ += static_cast<char>(cell.kind());
    switch (cell.kind()) {
      case SQLITE_NULL:
        break;
      case SQLITE_INTEGER:
        append(key_, cell.integer());
        break;
      case SQLITE_FLOAT:
        append(key_, cell.real());
        break;
      default:
        append(key_, cell.utf8().size());
        key_ += cell.utf8();
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

void SumsByKey::addGroup(Slot& slot, std::size_t hash) {
  slot = {hash, static_cast<int>(all_.size())};
  all_.push_back(key_);
  sums_.resize(sums_.size() + static_cast<std::size_t>(sumCount_));
  for (int column = 0; column < keys_; ++column)
    addCell(cells_, statement_, column);
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

void SumsByKey::addRow() {
  readKey();
  const std::size_t hash = std::hash<std::string_view>()(key_);
  Slot& slot = slotOf(hash);
  std::size_t first = static_cast<std::size_t>(slot.group) * static_cast<std::size_t>(sumCount_);
  if (slot.group < 0) {
    first = sums_.size();
    addGroup(slot, hash);
  }
  for (int i = 0; i < sumCount_; ++i)
    sums_[first + static_cast<std::size_t>(i)] += sqlite3_column_double(statement_, keys_ + i);
}

RowSet SumsByKey::rows(std::shared_ptr<const ColumnNames> names) const {
  RowSet rows(std::move(names));
  auto sum = sums_.begin();
  for (int row = 0; row < cells_.rowCount(); ++row) {
    for (int column = 0; column < keys_; ++column)
      copyCell(rows, cells_, row, column);
    for (int i = 0; i < sumCount_; ++i)
      rows.addReal(toSixDecimals(static_cast<double>(*sum++)));
  }
  return rows;
}

}  // namespace jxc::sqlite
