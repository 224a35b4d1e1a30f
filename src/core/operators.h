// 操作员: rules of who may log in: adding, changing, copying, deleting operators, and one's own password.
#pragma once

#include "core/prompt.h"
#include "core/sql.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace jxc {

/// What is keyed in for one operator. The round-off is in yuan. Passwords count as they are typed.
struct OperatorDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString number;       // a_sn of an existing one
  QString name, roleKey;
  QString password, passwordAgain;             // only from the operator, never to him
  double mostRoundOff = 0;                     // the most that this cashier may round off at the till
  bool isHeadCashier = false;                  // POS柜长
  bool isDisabled = false;                     // leaves the login and the lists, stays in history
  std::optional<QStringList> warehouses = {};  // that are open to him; nothing: they stay as they are
};

/// Whether this operator may see and change operators at all; told when not. All rules below ask it themselves.
bool mayManageOperators(Prompt& prompt);

/// Whether he may change this one: an operator of the administrator's role is changed by such a one only, and so nobody
/// makes himself administrator. Told when not. The rules below ask it themselves.
bool mayChangeOperator(std::int64_t id, Prompt& prompt);

/// Whether this operator may open warehouses to operators, and close them.
bool mayOpenWarehouses();

/// What the dialog of a new operator begins with: no role, and all warehouses open to him; where operators are bound to
/// warehouses and there are several, none before one is chosen.
OperatorDraft newOperator();
/// The operator with this id, without his password; throws DbError when he is gone or the right is missing.
OperatorDraft readOperator(std::int64_t id);
/// Adds an operator with a role of his own choice (a key of `rolesToChoose`), his warehouses with him. Asks when he has
/// no password. Returns his number, nothing when refused.
std::optional<QString> addOperator(const OperatorDraft& draft, Prompt& prompt);
/// Changes an operator. An empty password keeps the old one; role and state of the built-in administrator stay. A new
/// name follows into the warehouses; documents keep the one under which they were written. False when refused.
bool modifyOperator(const OperatorDraft& draft, Prompt& prompt);
/// Deletes an operator without purchases and sales, and his binding to warehouses. Asks. False when refused.
bool deleteOperator(std::int64_t id, Prompt& prompt);

/// What copying an operator keeps for pasting.
struct OperatorCopy {
  QString name, roleKey;
  double mostRoundOff = 0;
};
std::optional<OperatorCopy> copyOperator(std::int64_t id, Prompt& prompt);
/// Adds "复制 " + name with the same role and round-off, and no password: asks about that. The name is not compared
/// with the list.
bool pasteOperator(const OperatorCopy& copy, Prompt& prompt);

/// Operators with their role's name, by what is looked for in name and number; without passwords. Nothing without the
/// right.
Sql operatorListStatement(const QString& typed = {});

/// Changes the password of the operator of the session; an empty one takes it away.
bool changeOwnPassword(const QString& old, const QString& password, const QString& again, Prompt& prompt);

}  // namespace jxc
