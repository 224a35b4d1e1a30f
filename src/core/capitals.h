// 大写金额: an amount of yuan in Chinese capitals, as printed on documents.
#pragma once

#include <QString>
#include <QStringView>

namespace jxc {

/// An amount in its plain text form ("100.05", "-1.10") in capitals ("壹佰元零伍分", "负壹元壹角"). Fen beyond the
/// second decimal are cut, not rounded. Empty when the text holds anything but digits, one point and a leading minus.
QString moneyInCapitals(QStringView amount);

}  // namespace jxc
