#include "masterdata/goods_search.h"

#include "core/pinyin.h"
#include "stock/goods_words.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <unordered_map>

namespace jxc {
namespace goods_search_detail {

constexpr std::array<std::string_view, 6> kColumns = {"g_sn", "g_name", "g_jm", "g_sptm", "gg_name", "color_name"};
constexpr std::size_t kName = 1, kLetters = 2;

constexpr std::array<char, 256> makeUpper() {
  std::array<char, 256> table{};
  for (int i = 0; i < 256; ++i)
    table[static_cast<std::size_t>(i)] = static_cast<char>(i >= 'a' && i <= 'z' ? i - 'a' + 'A' : i);
  return table;
}
// `like` is blind to the case of Latin letters only, and so is this.
constexpr auto kUpper = makeUpper();

char upper(char c) {
  return kUpper[static_cast<unsigned char>(c)];
}

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Whether a word with "_" in it matches at this place: "_" is any one character, but never the end of a column.
bool matchesAt(const char* at, const char* end, const std::string& word) {
  for (const char c : word) {
    if (at == end) return false;
    if (c != '_') {
      if (*at++ != c) return false;
      continue;
    }
    if (*at++ == '\0') return false;
    while (at != end && isContinuation(*at))
      ++at;
  }
  return true;
}

float powerIn(std::string_view text) {
  bool isNumber = false;
  const float power = QByteArray(text.data(), static_cast<qsizetype>(text.size())).toFloat(&isNumber);
  if (text.empty()) return std::numeric_limits<float>::quiet_NaN();
  return isNumber ? power : std::numeric_limits<float>::infinity();
}

/// The character at this place of a text, in UTF-8; empty behind its end.
std::string_view characterAt(std::string_view text, std::size_t place) {
  std::size_t at = 0;
  const auto goOn = [&] {
    do
      ++at;
    while (at < text.size() && isContinuation(text[at]));
  };
  for (; place > 0 && at < text.size(); --place)
    goOn();
  const std::size_t begin = at;
  if (at < text.size()) goOn();
  return text.substr(begin, at - begin);
}

/// Whether the short name matches with one character of the name read in its other way, as the query asks it.
bool readsAs(std::string_view name, std::string_view letters, const OtherReading& reading) {
  const std::size_t found = letters.find(reading.letters.toStdString());
  if (found == std::string_view::npos) return false;
  const auto before =
      static_cast<std::size_t>(std::count_if(letters.begin(), letters.begin() + static_cast<std::ptrdiff_t>(found),
                                             [](char c) { return !isContinuation(c); }));
  const std::string_view character = characterAt(name, before + static_cast<std::size_t>(reading.at));
  return !character.empty() && reading.characters.toStdString().find(character) != std::string::npos;
}

const char* findWord(const char* from, const char* end, const std::string& word, bool withWildcard) {
  if (!withWildcard) {
    return static_cast<const char*>(memmem(from, static_cast<std::size_t>(end - from), word.data(), word.size()));
  }
  for (; from != end; ++from) {
    if (!isContinuation(*from) && matchesAt(from, end, word)) return from;
  }
  return nullptr;
}

}  // namespace goods_search_detail

GoodsIndex::GoodsIndex(RowSet rows) : rows_(std::move(rows)) {
  using namespace goods_search_detail;
  std::array<int, kColumns.size()> columns{};
  for (std::size_t i = 0; i < kColumns.size(); ++i)
    columns[i] = rows_.columnIndex(kColumns[i]);
  const int count = rows_.rowCount();
  end_.reserve(static_cast<std::size_t>(count));
  text_.reserve(static_cast<std::size_t>(count) * 96);
  for (int row = 0; row < count; ++row) {
    for (const int column : columns) {
      if (column >= 0) text_ += rows_.utf8(row, column);
      text_ += '\0';
    }
    end_.push_back(text_.size());
  }
  std::transform(text_.begin(), text_.end(), text_.begin(), upper);
  const auto readPowers = [&](std::string_view column, std::vector<float>& powers) {
    const int at = rows_.columnIndex(column);
    powers.reserve(end_.size());
    for (int row = 0; row < count; ++row)
      powers.push_back(at < 0 ? std::numeric_limits<float>::quiet_NaN() : powerIn(rows_.utf8(row, at)));
  };
  readPowers("g_qgd", spheres_);
  readPowers("g_sgd", cylinders_);

  const int classColumn = rows_.columnIndex("gc_sn");
  std::unordered_map<std::string_view, int> places;
  classOf_.reserve(end_.size());
  for (int row = 0; row < count; ++row) {
    const std::string_view number = classColumn < 0 ? std::string_view() : rows_.utf8(row, classColumn);
    const auto [place, isNew] = places.try_emplace(number, static_cast<int>(classes_.size()));
    if (isNew) classes_.emplace_back(number);
    classOf_.push_back(place->second);
  }
}

void GoodsIndex::keepRowsWith(const std::string& word, std::vector<char>& kept) const {
  using namespace goods_search_detail;
  const bool withWildcard = word.find('_') != std::string::npos;
  const char* const begin = text_.data();
  const char* const end = begin + text_.size();
  const char* at = begin;
  std::size_t row = 0;
  const auto dropUntil = [&](std::size_t next) { std::fill(kept.begin() + row, kept.begin() + next, 0); };
  while (row < end_.size()) {
    const char* found = findWord(at, end, word, withWildcard);
    if (!found) break;
    const auto offset = static_cast<std::size_t>(found - begin);
    const auto hit = static_cast<std::size_t>(std::upper_bound(end_.begin() + row, end_.end(), offset) - end_.begin());
    dropUntil(hit);
    row = hit + 1;
    at = begin + end_[hit];
  }
  dropUntil(end_.size());
}

void GoodsIndex::keepRowsOf(const std::vector<float>& powers, double power, std::vector<char>& kept) const {
  using namespace goods_search_detail;
  std::vector<std::string> forms;
  for (const QString& form : powerInNames(power))
    forms.push_back(form.toStdString());
  const auto isInName = [&](std::size_t row) {
    const std::string name = std::string(columnsOf(row)[kName]) + ' ';
    return std::any_of(forms.begin(), forms.end(),
                       [&](const std::string& form) { return name.find(form) != std::string::npos; });
  };
  for (std::size_t row = 0; row < kept.size(); ++row)
    if (kept[row]) kept[row] = std::isnan(spheres_[row]) ? isInName(row) : std::abs(powers[row] - power) < kSamePower;
}

std::vector<std::string_view> GoodsIndex::columnsOf(std::size_t row) const {
  std::vector<std::string_view> columns;
  const std::size_t end = end_[row];
  for (std::size_t at = row == 0 ? 0 : end_[row - 1]; at < end;) {
    const std::size_t zero = text_.find('\0', at);
    columns.push_back(std::string_view(text_).substr(at, zero - at));
    at = zero + 1;
  }
  return columns;
}

std::vector<int> GoodsIndex::find(const QString& typed, const QString& classNumber) const {
  using namespace goods_search_detail;
  const std::string above = classNumber.toStdString();
  std::vector<char> chosen;
  for (const std::string& number : classes_)
    chosen.push_back(number.starts_with(above) ? 1 : 0);
  std::vector<char> kept(end_.size(), 1);
  const GoodsWords wanted = goodsWords(typed);
  if (wanted.sphere) keepRowsOf(spheres_, *wanted.sphere, kept);
  if (wanted.cylinder) keepRowsOf(cylinders_, *wanted.cylinder, kept);
  for (const QString& word : wanted.words) {
    const auto readings = otherReadings(word);
    const std::vector<char> before = readings.empty() ? std::vector<char>() : kept;
    keepRowsWith(word.toStdString(), kept);
    for (std::size_t row = 0; row < before.size(); ++row) {
      if (!before[row] || kept[row]) continue;
      const auto columns = columnsOf(row);
      kept[row] = std::any_of(readings.begin(), readings.end(), [&](const OtherReading& reading) {
        return readsAs(columns[kName], columns[kLetters], reading);
      });
    }
  }
  std::vector<int> found;
  for (std::size_t row = 0; row < kept.size(); ++row) {
    if (kept[row] && chosen[static_cast<std::size_t>(classOf_[row])]) found.push_back(static_cast<int>(row));
  }
  return found;
}

}  // namespace jxc
