// Writes src/core/pinyin_letters.h: the first pinyin letter of every character from U+4E00 to U+9FA5, by ICU's
// Han-Latin. Needed only when a newer ICU shall be taken over; the program itself uses the table alone.
//   g++ -std=c++20 tools/make_pinyin_letters.cpp -o build/make_pinyin_letters $(pkg-config --cflags --libs icu-i18n
//   icu-uc) build/make_pinyin_letters > src/core/pinyin_letters.h
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <unicode/translit.h>
#include <unicode/unistr.h>

namespace {

constexpr char16_t kFirst = 0x4E00, kLast = 0x9FA5;
constexpr std::size_t kPerLine = 100;

// A few unit ligatures have no one-syllable reading: '?' leaves them as they are.
char letterOf(const icu::UnicodeString& reading) {
  const char16_t c = reading.isEmpty() ? u'?' : reading[0];
  return c >= u'A' && c <= u'Z' ? static_cast<char>(c) : '?';
}

}  // namespace

int main() {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<icu::Transliterator> toLetters(
      icu::Transliterator::createInstance("Han-Latin; Latin-ASCII; Upper", UTRANS_FORWARD, error));
  if (U_FAILURE(error)) {
    std::fprintf(stderr, "%s\n", u_errorName(error));
    return 1;
  }
  // One reading a line, so that no neighbour changes it.
  icu::UnicodeString text;
  for (char16_t c = kFirst; c <= kLast; ++c)
    text.append(c).append(u'\n');
  toLetters->transliterate(text);
  std::fprintf(stderr, "%.0f ms\n", std::chrono::duration<double, std::milli>(Clock::now() - start).count());

  std::string letters;
  for (std::int32_t at = 0; at < text.length();) {
    const std::int32_t end = text.indexOf(u'\n', at);
    letters += letterOf(text.tempSubStringBetween(at, end));
    at = end + 1;
  }
  if (letters.size() != kLast - kFirst + 1u) {
    std::fprintf(stderr, "%zu letters\n", letters.size());
    return 1;
  }
  std::printf(
      "// 拼音首字母: the first pinyin letter of U+4E00 to U+9FA5, in order; '?' has none. Made by "
      "tools/make_pinyin_letters.cpp.\n#pragma once\n\n#include <string_view>\n\nnamespace jxc {\n\n"
      "// clang-format off\ninline constexpr std::string_view kPinyinLetters =\n");
  for (std::size_t at = 0; at < letters.size(); at += kPerLine) {
    std::string line = letters.substr(at, kPerLine);
    std::printf("    \"%s\"%s\n", line.c_str(), at + kPerLine < letters.size() ? "" : ";");
  }
  std::printf("// clang-format on\n\n}  // namespace jxc\n");
}
