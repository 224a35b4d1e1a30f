// 会话字段: which database field is copied into which member of the session.
#pragma once

#include "core/session.h"
#include "engine/database.h"

#include <span>
#include <string_view>

namespace jxc {

struct SessionField {
  std::string_view name;  // column and member have the same name
  QString Session::*member;
};

// One list a table, in the order of the columns.
std::span<const SessionField> companyFields();    // jxc_company
std::span<const SessionField> parameterFields();  // jxc_xtcs
std::span<const SessionField> pointsFields();     // jxc_jfsz
std::span<const SessionField> smsFields();        // jxc_smscs

/// The parameters of another account set in the session, with what follows from them, until `loadSession` reads those
/// of the one in use again: whoever reckons in a set that is not in use works with its digits.
void readParameters(Database& from);

}  // namespace jxc
