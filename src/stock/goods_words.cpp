#include "stock/goods_words.h"

#include "core/text.h"

#include <QRegularExpression>

#include <cmath>
#include <utility>

namespace jxc {
namespace goods_words_detail {

/// A word that is one power, or both of a lens in one ("-3.00/-0.75", "-3.00-0.75"), as plain numbers; nothing else.
std::optional<std::pair<QString, QString>> powersIn(QString word) {
  word.replace(QChar(0x2212), u'-').replace(QChar(0xFF0D), u'-').replace(QChar(0xFF0B), u'+');
  static const QRegularExpression one(
      QStringLiteral("^([+-](?:\\d+\\.?\\d*|\\.\\d+))(?:[/／]?([+-](?:\\d+\\.?\\d*|\\.\\d+)))?$"));
  const auto match = one.match(word);
  if (!match.hasMatch()) return {};
  return std::pair(match.captured(1), match.captured(2));
}

}  // namespace goods_words_detail

GoodsWords goodsWords(const QString& typed) {
  using namespace goods_words_detail;
  QString clean = sanitizeKeyword(typed);
  for (QChar& c : clean) {
    if (c >= u'a' && c <= u'z') c = QChar(c.unicode() - u'a' + u'A');
  }
  GoodsWords wanted;
  const auto take = [&](QStringView power) {
    if (power.isEmpty()) return;
    (wanted.sphere ? wanted.cylinder : wanted.sphere) = power.toDouble();
  };
  for (const QString& word : clean.split(u' ', Qt::SkipEmptyParts)) {
    const auto found = powersIn(word);
    if (!found || wanted.cylinder || (wanted.sphere && !found->second.isEmpty())) {
      wanted.words << word;
      continue;
    }
    take(found->first);
    take(found->second);
  }
  return wanted;
}

QStringList powerInNames(double power) {
  const QChar sign = power < 0 || std::signbit(power) ? u'-' : u'+';
  QStringList forms;
  for (int digits = 0; digits <= 3; ++digits)
    if (const QString text = QString::number(std::abs(power), 'f', digits);
        std::abs(text.toDouble() - std::abs(power)) < kSamePower)
      forms << sign + text + u' ';
  return forms;
}

void addPowers(Filter& filter, const GoodsWords& wanted) {
  const auto add = [&](std::string_view column, const std::optional<double>& power) {
    if (!power) return;
    Sql any(compose("((isnumeric({}) and abs(val({})-(?))<?)", {column, column}), *power, kSamePower);
    any.add(" or ((a.g_qgd is null or a.g_qgd='') and (1=0");
    for (const QString& form : powerInNames(*power))
      any.add(" or a.g_name+' ' like ?", u'%' + form + u'%');
    filter.add(any.add(")))"));
  };
  add("a.g_qgd", wanted.sphere);
  add("a.g_sgd", wanted.cylinder);
}

void addGoodsKey(Filter& filter, const Criteria& criteria, std::initializer_list<std::string_view> columns) {
  const GoodsWords wanted = goodsWords(criteria.key);
  if (!wanted.sphere) return addKey(filter, criteria, columns);
  addPowers(filter, wanted);
  Criteria rest = criteria;
  rest.key = wanted.words.join(u' ');
  addKey(filter, rest, columns);
}

}  // namespace jxc
