// 测试输出: Qt texts and lists in the messages of failed tests.
#pragma once

#include "core/fillers.h"

#include <QString>
#include <QStringList>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* out) {
  *out << '[' << list.join(QStringLiteral(" | ")).toStdString() << ']';
}

namespace jxc {
inline void PrintTo(const ListItem& item, std::ostream* out) {
  *out << item.text.toStdString() << '=' << item.key.toStdString();
}
}  // namespace jxc
