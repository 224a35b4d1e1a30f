#include "core/text.h"

#include "core/clock.h"
#include "core/session.h"

#include <QStringList>

#include <array>

namespace jxc::text_detail {

struct Replacement {
  char16_t from;
  char16_t to;      // 0: the character vanishes
  bool inKeywords;  // also replaced in keywords
};
inline constexpr std::array replacements{
    Replacement{u'\'', u'‘', true},  Replacement{u'?', u'？', true},  Replacement{u'%', u'％', true},
    Replacement{u'!', u'！', true},  Replacement{u'$', u'￥', true},  Replacement{u'&', u'＆', true},
    Replacement{u',', u'，', true},  Replacement{u'(', u'（', false}, Replacement{u')', u'）', false},
    Replacement{u'+', u'＋', false}, Replacement{u'-', u'－', false}, Replacement{u'/', u'／', false},
    Replacement{u'@', u'＠', true},  Replacement{u'~', u'～', true},  Replacement{u'"', u'“', true},
    Replacement{u'^', 0, true},      Replacement{u'`', 0, true},
};

QString replaced(QStringView text, bool asKeyword) {
  QString result;
  result.reserve(text.size());
  for (const QChar character : text) {
    const auto found = std::find_if(replacements.begin(), replacements.end(), [&](const Replacement& replacement) {
      return character == replacement.from && (replacement.inKeywords || !asKeyword);
    });
    if (found == replacements.end()) {
      result += character;
    } else if (found->to != 0) {
      result += QChar(found->to);
    }
  }
  return result;
}

}  // namespace jxc::text_detail

namespace jxc {

QString sanitizeText(QStringView text) {
  return text_detail::replaced(text, false);
}

QString sanitizeKeyword(QStringView text) {
  return text_detail::replaced(text, true);
}

bool strIsTrue(QStringView text) {
  return !text.isEmpty() && text != u"0" && text != u"False";
}

bool priceGradeAllowed(QStringView value, QStringView kind) {
  if (!strIsTrue(value)) return false;
  const bool needsCost = kind == u"all" || kind == u"cj";
  const bool needsPrice = kind == u"all" || kind == u"xs";
  return (!needsCost || session().canSeeCost) && (!needsPrice || session().canSeePrice);
}

int nthPos(QStringView text, QStringView needle, int n) {
  if (needle.isEmpty() || n < 1) return 0;
  qsizetype from = 0;
  for (int found = 1;; ++found) {
    const qsizetype at = text.indexOf(needle, from);
    if (at < 0) return 0;
    if (found == n) return static_cast<int>(at) + 1;
    from = at + needle.size();
  }
}

QString replaceListEntry(const QString& list, const QString& entry, const QString& now) {
  QString result;
  for (const QString& part : list.split(u',', Qt::SkipEmptyParts)) {
    const QString& kept = part == entry ? now : part;
    if (!kept.isEmpty()) result += kept + u',';
  }
  return result;
}

QString weekdayName() {
  static constexpr std::array names{u"星期日 ", u"星期一 ", u"星期二 ", u"星期三 ", u"星期四 ", u"星期五 ", u"星期六 "};
  const int day = clock::now().date().dayOfWeek() % 7;  // Qt counts Sunday as the seventh
  return QString::fromUtf16(names[static_cast<std::size_t>(day)]);
}

}  // namespace jxc
