// 账套夹具: a test over a fresh account set in memory, with the administrator logged in and the clock standing still.
#pragma once

#include "core/session.h"
#include "core/statements.h"
#include "harness/qt_printers.h"
#include "harness/scripted_prompt.h"

#include <gtest/gtest.h>

namespace jxc::test {

/// The account set is made once a process (all tables, upgraded) and restored from a snapshot for each test. The
/// operator is "admin", the session is loaded, and it is always 2021-05-03 14:30:00, a Monday.
class AccountSetFixture : public ::testing::Test {
 protected:
  AccountSetFixture();
  ~AccountSetFixture() override;

  /// Another parameter of the system: writes it and loads the session.
  void setParameter(std::string_view field, const Value& value);
  /// The clock at "yyyy-MM-dd" or "yyyy-MM-dd HH:mm:ss".
  void setClock(const QString& moment);
  /// Rights of one group of a role, "1011…" by position; the role is made when it is new.
  void setRights(const QString& role, std::string_view group, const QString& rights);
  /// Makes an operator the one of the session; he is added, without a password, when he is new.
  void becomeOperator(const QString& name, const QString& sn, const QString& role);

  ScriptedPrompt prompt;
};

}  // namespace jxc::test
