// 拼音简码: the search letters of a name.
#pragma once

#include <QString>
#include <QStringView>

namespace jxc {

/// Short name of a text: each Chinese character (U+4E00 to U+9FA5) becomes the first letter of its first pinyin
/// reading, every other character stays; the whole in upper case. "默认员工" gives "MRYG". Safe from any thread.
QString makeJm(QStringView text);

}  // namespace jxc
