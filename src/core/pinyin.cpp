#include "core/pinyin.h"

#include "core/pinyin_letters.h"

namespace jxc {
namespace pinyin_detail {

constexpr char16_t kFirst = 0x4E00, kLast = 0x9FA5;
static_assert(kPinyinLetters.size() == kLast - kFirst + 1);

char16_t shortLetter(char16_t c) {
  if (c < kFirst || c > kLast) return c;
  const char letter = kPinyinLetters[c - kFirst];
  return letter == '?' ? c : static_cast<char16_t>(letter);
}

}  // namespace pinyin_detail

QString makeJm(QStringView text) {
  QString letters = text.toString();
  for (QChar& c : letters)
    c = pinyin_detail::shortLetter(c.unicode());
  return letters.toUpper();
}

}  // namespace jxc
