#include "engine/sqlite/sums_by_key.h"

#include "engine/grouped_sums.h"
#include "engine/number_text.h"
#include "engine/sqlite/native_cell.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <new>
#include <string_view>
#include <utility>

namespace jxc::sqlite {
namespace sums_by_key_detail {

constexpr std::size_t kFirstSlots = 1024;
constexpr const char* kPointer = "jxc_sums";  // kind of the pointer that the function is given

template <class Number>
void append(std::string& key, Number number) {
  key.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void step(sqlite3_context* context, int, sqlite3_value** arguments) {
  auto* const sums = static_cast<SumsByKey*>(sqlite3_value_pointer(arguments[0], kPointer));
  if (sums == nullptr) return sqlite3_result_error(context, "jxc_sums is not for statements", -1);
  try {
    sums->add(arguments + 1);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

void finish(sqlite3_context* context) {
  sqlite3_result_null(context);
}

}  // namespace sums_by_key_detail

SumsByKey::SumsByKey(std::shared_ptr<const ColumnNames> columns, int keys)
    : columns_(std::move(columns)),
      keys_(keys),
      sumCount_(static_cast<int>(columns_->names().size()) - keys),
      slots_(sums_by_key_detail::kFirstSlots),
      cells_(std::vector<std::string>(columns_->names().begin(), columns_->names().begin() + keys)) {}

std::string SumsByKey::over(const std::string& select) const {
  std::string cells;  // by place: what a statement calls its columns stays with the plan
  for (std::size_t i = 0; i < columns_->names().size(); ++i)
    cells += (i > 0 ? ",c" : "c") + std::to_string(i);
  return "with lines(" + cells + ") as (" + select + ") select jxc_sums(:sums," + cells + ") from lines";
}

void SumsByKey::bind(sqlite3_stmt* statement) {
  sqlite3_bind_pointer(statement, sqlite3_bind_parameter_index(statement, ":sums"), this, sums_by_key_detail::kPointer,
                       nullptr);
}

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

void registerSums(sqlite3* connection) {
  using namespace sums_by_key_detail;
  sqlite3_create_function_v2(connection, "jxc_sums", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, nullptr, step,
                             finish, nullptr);
}

}  // namespace jxc::sqlite
