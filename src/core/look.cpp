#include "core/look.h"

#include "core/session.h"
#include "core/statements.h"

namespace jxc {

void saveOperatorSkin(const QString& name) {
  Transaction transaction(accountDb());
  execSql("update jxc_skin set skin_name=? where a_name=?", name.left(64), session().a_name);
  transaction.commit();
}

}  // namespace jxc
