// 拼音简码: the search letters of a name.
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace jxc {

/// Short name of a text: each Chinese character (U+4E00 to U+9FA5) becomes the first letter of its first pinyin
/// reading, every other character stays; the whole in upper case. "默认员工" gives "MRYG". Safe from any thread.
QString makeJm(QStringView text);

/// One way in which letters that were typed may be meant for a character's other reading: "CQ" for 重庆, whose short
/// name is "ZQ".
struct OtherReading {
  QString letters;     // what was typed, with the first reading instead at …
  int at;              // … this place
  QString characters;  // the name has one of these there
};
/// All such ways; none for anything but Latin letters. Letters stand for Chinese names only where they are two or more.
std::vector<OtherReading> otherReadings(const QString& typed);

}  // namespace jxc
