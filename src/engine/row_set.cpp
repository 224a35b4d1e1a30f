#include "engine/row_set.h"

#include "engine/error.h"
#include "engine/number_text.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace jxc {
namespace row_set_detail {

char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

std::size_t hashOf(std::string_view name) {
  std::size_t hash = 14695981039346656037ull;
  for (const char c : name)
    hash = (hash ^ static_cast<unsigned char>(lowered(c))) * 1099511628211ull;
  return hash ^ (hash >> 32);
}

bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a[i] != b[i] && lowered(a[i]) != lowered(b[i])) return false;
  return true;
}

double textNumber(std::string_view text) {
  return parseNumber(text).value_or(0);
}

}  // namespace row_set_detail

ColumnNames::ColumnNames(std::vector<std::string> names) : names_(std::move(names)) {
  std::size_t size = 4;
  while (size < names_.size() * 2)
    size *= 2;
  slots_.assign(size, -1);
  for (std::size_t i = 0; i < names_.size(); ++i) {
    std::size_t at = row_set_detail::hashOf(names_[i]) & (size - 1);
    bool twice = false;
    for (; slots_[at] >= 0; at = (at + 1) & (size - 1))
      if (row_set_detail::sameName(names_[static_cast<std::size_t>(slots_[at])], names_[i])) twice = true;
    if (!twice) slots_[at] = static_cast<std::int32_t>(i);
  }
}

int ColumnNames::indexOf(std::string_view name) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = row_set_detail::hashOf(name) & mask; slots_[at] >= 0; at = (at + 1) & mask)
    if (row_set_detail::sameName(names_[static_cast<std::size_t>(slots_[at])], name)) return slots_[at];
  return -1;
}

/// Cells in blocks; the first block grows from a few cells, because most results are a row or two.
struct RowSet::Rows : Room {
  struct CellBlock {
    std::unique_ptr<Cell[]> cells;
    std::size_t capacity = 0;
  };
  std::vector<CellBlock> owned;
  std::vector<const Cell*> blocks;

  std::vector<std::shared_ptr<char[]>> texts;
  char* textNext = nullptr;
  char* textEnd = nullptr;
  std::size_t textBlock = 512;
  std::size_t textBytes = 0;

  void addBlock(std::size_t cells) {
    owned.push_back({std::make_unique_for_overwrite<Cell[]>(cells), cells});
    blocks.push_back(owned.back().cells.get());
    next = owned.back().cells.get();
    end = next + cells;
  }

  void grow(std::size_t columns) {
    if (owned.empty()) return addBlock(std::min(blockCells, std::max<std::size_t>(columns, 4)));
    CellBlock& last = owned.back();
    if (last.capacity == blockCells) return addBlock(blockCells);
    const std::size_t capacity = std::min(blockCells, last.capacity * 4);
    auto larger = std::make_unique_for_overwrite<Cell[]>(capacity);
    std::memcpy(static_cast<void*>(larger.get()), last.cells.get(), last.capacity * sizeof(Cell));
    next = larger.get() + last.capacity;
    end = larger.get() + capacity;
    last = {std::move(larger), capacity};
    blocks.back() = last.cells.get();
  }

  const char* keep(std::string_view text) {
    if (static_cast<std::size_t>(textEnd - textNext) < text.size()) {
      constexpr std::size_t largest = 256 * 1024;
      if (text.size() > largest / 4) {  // a block of its own, the current one is filled on
        texts.push_back(std::shared_ptr<char[]>(new char[text.size()]));
        textBytes += text.size();
        std::memcpy(texts.back().get(), text.data(), text.size());
        return texts.back().get();
      }
      while (textBlock < text.size())
        textBlock *= 4;
      texts.push_back(std::shared_ptr<char[]>(new char[textBlock]));
      textBytes += textBlock;
      textNext = texts.back().get();
      textEnd = textNext + textBlock;
      textBlock = std::min(largest, textBlock * 4);
    }
    std::memcpy(textNext, text.data(), text.size());
    const char* kept = textNext;
    textNext += text.size();
    return kept;
  }

  /// Rows of its own for a set that is added to while others look at the same rows. Texts stay shared.
  std::shared_ptr<Rows> copy() const {
    auto other = std::make_shared<Rows>();
    for (const CellBlock& block : owned) {
      other->addBlock(block.capacity);
      std::memcpy(static_cast<void*>(other->next), block.cells.get(), block.capacity * sizeof(Cell));
    }
    if (!owned.empty()) other->next += next - owned.back().cells.get();
    other->count = count;
    other->texts = texts;
    other->textBytes = textBytes;
    return other;
  }
};

RowSet::RowSet(std::vector<std::string> columns) {
  if (columns.empty()) return;
  names_ = std::make_shared<ColumnNames>(std::move(columns));
  columnCount_ = static_cast<int>(names_->names().size());
}

RowSet::RowSet(std::shared_ptr<const ColumnNames> columns)
    : names_(std::move(columns)), columnCount_(static_cast<int>(names_->names().size())) {}

const std::vector<std::string>& RowSet::columns() const {
  static const std::vector<std::string> none;
  return names_ ? names_->names() : none;
}

RowSet RowSet::without(std::span<const std::string_view> columns) const {
  if (!names_) return *this;
  std::vector<std::string> names = names_->names();
  for (const std::string_view each : columns)
    for (std::string& name : names)
      if (row_set_detail::sameName(name, each)) name.clear();
  RowSet rest = *this;
  rest.names_ = std::make_shared<const ColumnNames>(std::move(names));
  return rest;
}

int RowSet::rowCount() const {
  return rows_ ? static_cast<int>(rows_->count / static_cast<std::size_t>(columnCount_)) : 0;
}

RowSet::Rows& RowSet::ownRows() const {
  return static_cast<Rows&>(*rows_);
}

void RowSet::makeRoom() {
  if (!rows_)
    rows_ = std::make_shared<Rows>();
  else if (rows_.use_count() > 1)
    rows_ = ownRows().copy();
  if (rows_->next == rows_->end) ownRows().grow(static_cast<std::size_t>(columnCount_));
  blocks_ = ownRows().blocks.data();
}

void RowSet::addEmptyRow() {
  for (int column = 0; column < columnCount(); ++column)
    addNull();
}

void RowSet::addRow(const RowSet& from, int row) {
  for (int column = 0; column < columnCount(); ++column) {
    const Cell& cell = from.cell(row, column);
    switch (cell.kind) {
      case Value::Kind::Null:
        addNull();
        break;
      case Value::Kind::Integer:
        addInteger(cell.integer);
        break;
      case Value::Kind::Real:
        addReal(cell.real);
        break;
      case Value::Kind::Text:
        addText(textOf(cell));
        break;
    }
  }
}

void RowSet::addText(std::string_view utf8) {
  if (utf8.size() > std::numeric_limits<std::uint32_t>::max())
    throw DbError(DbError::Kind::Other, QStringLiteral("一个字段的内容太大，无法读取。"));
  Cell& cell = append(Value::Kind::Text);
  cell.length = static_cast<std::uint32_t>(utf8.size());
  if (utf8.size() <= inlineLength) {
    cell.integer = 0;
    if (!utf8.empty()) std::memcpy(cell.inlined, utf8.data(), utf8.size());
    return;
  }
  // Lists are full of the same supplier, unit and date one row below the other: those are kept once.
  const std::size_t at = rows_->count - 1;
  if (at >= static_cast<std::size_t>(columnCount_)) {
    const std::size_t above = at - static_cast<std::size_t>(columnCount_);
    const Cell& before = blocks_[above >> blockShift][above & (blockCells - 1)];
    if (before.kind == Value::Kind::Text && before.length == cell.length &&
        std::memcmp(before.text, utf8.data(), utf8.size()) == 0) {
      cell.text = before.text;
      return;
    }
  }
  cell.text = ownRows().keep(utf8);
}

std::size_t RowSet::memory() const {
  if (!rows_) return 0;
  std::size_t bytes = ownRows().textBytes;
  for (const auto& block : ownRows().owned)
    bytes += block.capacity * sizeof(Cell);
  return bytes;
}

double RowSet::numberOf(const Cell& cell) {
  switch (cell.kind) {
    case Value::Kind::Integer:
      return static_cast<double>(cell.integer);
    case Value::Kind::Real:
      return cell.real;
    case Value::Kind::Text:
      return row_set_detail::textNumber(textOf(cell));
    case Value::Kind::Null:
      break;
  }
  return 0;
}

QString RowSet::text(int row, int column) const {
  const Cell& c = cell(row, column);
  if (c.kind == Value::Kind::Null) return {};
  if (c.kind == Value::Kind::Text) {
    const std::string_view text = textOf(c);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  }
  NumberBuffer buffer;
  const std::string_view text = c.kind == Value::Kind::Integer ? formatNumber(static_cast<long long>(c.integer), buffer)
                                                               : formatNumber(c.real, buffer);
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

Value RowSet::value(int row, int column) const {
  const Cell& c = cell(row, column);
  switch (c.kind) {
    case Value::Kind::Integer:
      return Value(static_cast<long long>(c.integer));
    case Value::Kind::Real:
      return Value(c.real);
    case Value::Kind::Text:
      return Value(text(row, column));
    case Value::Kind::Null:
      break;
  }
  return {};
}

std::string_view RowSet::utf8(int row, int column) const {
  const Cell& c = cell(row, column);
  return c.kind == Value::Kind::Text ? textOf(c) : std::string_view{};
}

namespace row_set_detail {

int columnOf(const RowSet& set, std::string_view column, int row) {
  const int at = set.columnIndex(column);
  if (at < 0)
    throw DbError(DbError::Kind::UnknownName,
                  QStringLiteral("查询结果中没有字段 %1。")
                      .arg(QString::fromUtf8(column.data(), static_cast<qsizetype>(column.size()))));
  if (row < 0 || row >= set.rowCount())
    throw DbError(DbError::Kind::Other, QStringLiteral("查询结果中没有第 %1 行。").arg(row + 1));
  return at;
}

}  // namespace row_set_detail

QString Row::text(std::string_view column) const {
  return set_->text(row_, row_set_detail::columnOf(*set_, column, row_));
}
double Row::number(std::string_view column) const {
  return set_->number(row_, row_set_detail::columnOf(*set_, column, row_));
}
std::int64_t Row::integer(std::string_view column) const {
  return set_->integer(row_, row_set_detail::columnOf(*set_, column, row_));
}
bool Row::isNull(std::string_view column) const {
  return set_->isNull(row_, row_set_detail::columnOf(*set_, column, row_));
}
Value Row::value(std::string_view column) const {
  return set_->value(row_, row_set_detail::columnOf(*set_, column, row_));
}

}  // namespace jxc
