// 版本信息: the constants of this build: brand, company, version.
#pragma once

#include <QString>

namespace jxc::build {

inline constexpr const char16_t* brand = u"晴川";
inline constexpr const char16_t* programName = u"晴川进销存管理系统";
inline constexpr const char16_t* accountName = u"晴川进销存";
inline constexpr const char16_t* companyName = u"晴川信息技术有限公司";
inline constexpr const char16_t* companyShortName = u"晴川公司";
inline constexpr const char16_t* version = u"2021V2";
// Whoever installs the program may fill these in; the seed of the company row takes the telephone.
inline constexpr const char16_t* webAddress = u"";
inline constexpr const char16_t* telephone = u"";

/// "晴川进销存管理系统 2021V2", or with the short company name in brackets before the version.
QString windowTitle(const QString& companyShort = {});

}  // namespace jxc::build
