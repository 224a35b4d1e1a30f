#include "core/letter_search.h"

#include "core/pinyin.h"
#include "core/text.h"

namespace jxc {

void orOtherReadings(Sql& condition, std::string_view letters, std::string_view name, const QString& word) {
  for (const OtherReading& reading : otherReadings(word)) {
    // The letters stand below the characters, one by one; behind a name that is shorter than its letters there is
    // nothing that could be one of the characters.
    const std::string place = "+" + std::to_string(reading.at) + ",1))>0)";
    condition.add(compose(" or (instr({},?)>0 and instr(?,mid({}+'                                ',instr({},?)",
                          {letters, name, letters}) +
                      place,
                  reading.letters, reading.characters, reading.letters);
  }
}

void addNameSearch(Filter& filter, std::string_view number, std::string_view letters, std::string_view name,
                   const QString& typed) {
  if (typed.isEmpty()) return;
  const QString part = u'%' + sanitizeKeyword(typed) + u'%';
  Sql any(compose("({} like ? or {} like ? or {} like ?", {number, letters, name}), part, part, part);
  orOtherReadings(any, letters, name, typed);
  filter.add(any.add(")"));
}

}  // namespace jxc
