// 商品关键字: what an operator types to find goods: words and powers, in lists, in what is asked and in memory alike.
#pragma once

#include "core/enquiry.h"

#include <QString>
#include <QStringList>

#include <initializer_list>
#include <optional>
#include <string_view>

namespace jxc {

/// What an operator types to find goods. Words with a sign are powers, the first the sphere, the second the cylinder
/// ("1.56 -2.25 -0.75", also "-2.25/-0.75"): they are compared as numbers, so that "-3" finds -3.00 and nothing else.
/// Each other word must match one of six columns somewhere.
struct GoodsWords {
  QStringList words;  // cleaned like all stored text and in upper case
  std::optional<double> sphere, cylinder;
};
GoodsWords goodsWords(const QString& typed);
/// The powers of them as conditions on goods `a`.
void addPowers(Filter& filter, const GoodsWords& wanted);
/// The key of an enquiry over goods `a`: powers in it as above, the rest as one text that one of the columns must hold.
void addGoodsKey(Filter& filter, const Criteria& criteria, std::initializer_list<std::string_view> columns);
/// How this power may stand behind the name of goods that keep no powers of their own, contact lenses for one: "-1",
/// "-1.0", "-1.00", with the blank behind it that a name gets for it.
QStringList powerInNames(double power);
/// Powers have three decimals: what is nearer is one.
inline constexpr double kSamePower = 0.0005;

}  // namespace jxc
