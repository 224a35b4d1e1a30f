#include "core/pinyin.h"

#include "core/pinyin_letters.h"

#include <algorithm>

namespace jxc {
namespace pinyin_detail {

constexpr char16_t kFirst = 0x4E00, kLast = 0x9FA5;
static_assert(kPinyinLetters.size() == kLast - kFirst + 1);

char16_t shortLetter(char16_t c) {
  if (c < kFirst || c > kLast) return c;
  const char letter = kPinyinLetters[c - kFirst];
  return letter == '?' ? c : static_cast<char16_t>(letter);
}

/// Characters of names that are spoken in two ways, with both letters.
struct Spoken {
  char16_t character;
  char letters[3];
};
constexpr Spoken kSpoken[] = {
    {u'重', "ZC"}, {u'长', "ZC"}, {u'行', "XH"}, {u'调', "TD"}, {u'乐', "LY"}, {u'单', "DS"}, {u'曾', "ZC"},
    {u'解', "JX"}, {u'朝', "CZ"}, {u'沈', "SC"}, {u'翟', "ZD"}, {u'仇', "CQ"}, {u'查', "CZ"}, {u'盛', "SC"},
    {u'会', "HK"}, {u'车', "CJ"}, {u'传', "CZ"}, {u'藏', "ZC"}, {u'参', "CS"}, {u'弹', "DT"}, {u'校', "XJ"},
    {u'折', "ZS"}, {u'厦', "SX"}, {u'番', "FP"}, {u'区', "QO"}, {u'宿', "SX"}, {u'覃', "QT"}, {u'尉', "WY"},
    {u'系', "XJ"}, {u'降', "JX"}, {u'卡', "KQ"}, {u'晟', "SC"}, {u'贾', "JG"}, {u'率', "LS"}, {u'便', "BP"},
    {u'种', "ZC"}, {u'柜', "GJ"}, {u'泊', "BP"}, {u'屏', "PB"}, {u'省', "SX"}, {u'纤', "XQ"}, {u'蔚', "WY"},
    {u'匙', "CS"}, {u'秘', "MB"}, {u'咖', "KG"}, {u'强', "QJ"}, {u'壳', "KQ"}, {u'奇', "QJ"}, {u'石', "SD"},
};

bool isLetter(QChar c) {
  return c >= u'A' && c <= u'Z';
}

}  // namespace pinyin_detail

std::vector<OtherReading> otherReadings(const QString& typed) {
  using namespace pinyin_detail;
  const QString word = typed.toUpper();
  if (word.size() < 2 || !std::all_of(word.begin(), word.end(), isLetter)) return {};
  std::vector<OtherReading> readings;
  for (int at = 0; at < word.size(); ++at)
    for (const Spoken& spoken : kSpoken) {
      const char16_t first = shortLetter(spoken.character);
      const auto other = static_cast<char16_t>(spoken.letters[0] == first ? spoken.letters[1] : spoken.letters[0]);
      if (word[at] != other) continue;
      QString letters = word;
      letters[at] = first;
      const auto same = std::find_if(readings.begin(), readings.end(),
                                     [&](const OtherReading& each) { return each.letters == letters; });
      if (same == readings.end())
        readings.push_back({letters, at, QString(spoken.character)});
      else
        same->characters += spoken.character;
    }
  return readings;
}

QString makeJm(QStringView text) {
  QString letters = text.toString();
  for (QChar& c : letters)
    c = pinyin_detail::shortLetter(c.unicode());
  return letters.toUpper();
}

}  // namespace jxc
