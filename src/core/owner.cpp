#include "core/owner.h"

#include "core/data_module.h"
#include "core/wiping.h"
#include "engine/server.h"

#include <QScopeGuard>

namespace jxc {

bool asOwnerOf(Database& set, Prompt& prompt, const QString& what,
               const std::function<void(std::unique_ptr<Database>)>& work) {
  const QString owner = ownerToAsk(set);
  if (owner.isEmpty()) {
    work(nullptr);
    return true;
  }
  std::optional<QString> typed =
      prompt.askSecret(QStringLiteral("%1由帐套的所有者进行，请输入“%2”在数据库服务器上的密码：").arg(what, owner));
  if (!typed) return false;
  const WipedText password(*std::move(typed));  // and with it what the connection keeps of it
  std::unique_ptr<Database> his;
  try {
    his = openAsOwner(set, password);
  } catch (const DbError& failure) {
    prompt.notice(QStringLiteral("%1没有进行。\r\n\r\n").arg(what) + failure.message());
    return false;
  }
  work(std::move(his));
  return true;
}

bool asOwner(Prompt& prompt, const QString& what, const std::function<void()>& work) {
  return asOwnerOf(accountDb(), prompt, what, [&work](std::unique_ptr<Database> his) {
    if (!his) return work();
    std::unique_ptr<Database> station = dataModule().installAccountDb(std::move(his));
    const auto back = qScopeGuard([&] { dataModule().installAccountDb(std::move(station)); });
    work();
  });
}

}  // namespace jxc
