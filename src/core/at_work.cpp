#include "core/at_work.h"

#include "core/archive_look.h"
#include "core/data_module.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"

#include <QThread>

#include <array>
#include <utility>

namespace jxc {

class ConsoleAtWork {
 public:
  explicit ConsoleAtWork(std::unique_ptr<Presence> presence) : presence_(std::move(presence)) {}
  Presence& presence() { return *presence_; }

 private:
  std::unique_ptr<Presence> presence_;
};

namespace at_work_detail {

constexpr const char16_t* console = u"jxcctl";

/// That of this program at the set in use, made when it is first needed. It goes when another set is in use.
std::unique_ptr<Presence>& own() {
  static std::unique_ptr<Presence> presence;
  static QString of;
  if (isArchiveInUse()) return presence;  // the shop's own waits
  const QString place = dataModule().isAccountOpen() ? placeOf(accountDb()) : QString();
  if (std::exchange(of, place) != place || !presence) presence = place.isEmpty() ? nullptr : openPresence(accountDb());
  return presence;
}

QString nameOf(Database& database, const Station& station) {
  if (!station.name.isEmpty()) return station.name;
  if (station.number == 0) return QString::fromUtf16(console);
  const std::array<Value, 1> key{Value(QString::number(station.number))};
  const QString name = database.lookup("select a_name from jxc_admin where a_sn=?", key).text();
  return name.isEmpty() ? QStringLiteral("操作员 %1").arg(station.number) : name;
}

QStringList namesOf(Database& database, Presence& presence) {
  QStringList names;
  for (const Station& station : presence.others())
    names << nameOf(database, station);
  return names;
}

QString whyOf(Database& database, const Presence::Alone& alone) {
  const QString who = nameOf(database, alone.by);
  return QStringLiteral("%1正在%2，请等它完成。").arg(who, wordsOf(static_cast<AloneFor>(alone.work)));
}

std::optional<QString> whyNot(Database& database, Presence& presence) {
  const auto alone = presence.aloneBy();
  return alone ? std::optional(whyOf(database, *alone)) : std::nullopt;
}

}  // namespace at_work_detail

QString wordsOf(AloneFor what) {
  switch (what) {
    case AloneFor::Restore:
      return QStringLiteral("恢复数据");
    case AloneFor::Reset:
      return QStringLiteral("数据清理");
    case AloneFor::Closing:
      return QStringLiteral("数据结算");
  }
  return QStringLiteral("维护帐套");
}

std::optional<QString> comeToWork() {
  using namespace at_work_detail;
  Presence* const presence = own().get();
  const QString& name = session().a_name;
  const Station me{name.isEmpty() ? QStringLiteral("正在登录的工作站") : name, session().a_sn.toLongLong()};
  if (presence == nullptr || presence->enter(me)) return {};
  if (auto why = whyNot(accountDb(), *presence)) return why;
  // It was over in the moment between.
  if (presence->enter(me)) return {};
  return QStringLiteral("帐套正在维护，请稍候再登录。");
}

std::optional<QString> stayAtWork() {
  using namespace at_work_detail;
  Presence* const presence = own().get();
  return presence == nullptr || presence->stay() ? std::nullopt : whyNot(accountDb(), *presence);
}

void leaveWork() {
  if (Presence* const presence = at_work_detail::own().get()) presence->leave();
}

std::optional<QString> whyToWait() {
  using namespace at_work_detail;
  Presence* const presence = own().get();
  return presence ? whyNot(accountDb(), *presence) : std::nullopt;
}

QStringList othersAtWork() {
  using namespace at_work_detail;
  Presence* const presence = own().get();
  return presence ? namesOf(accountDb(), *presence) : QStringList();
}

std::shared_ptr<ConsoleAtWork> comeToWorkAtConsole(Database& database,
                                                   const std::function<void(const QString& why)>& waits) {
  using namespace at_work_detail;
  constexpr int pause = 300;  // ms
  std::unique_ptr<Presence> presence = openPresence(database);
  if (!presence) return nullptr;
  for (bool told = false; !presence->enter({QString::fromUtf16(console), 0}); QThread::msleep(pause)) {
    if (const auto why = whyNot(database, *presence); why && !std::exchange(told, true)) waits(*why);
  }
  return std::make_shared<ConsoleAtWork>(std::move(presence));
}

SetForOneself::~SetForOneself() {
  try {
    Presence* const presence = other_ ? other_.get() : at_work_detail::own().get();
    if (given_ && presence != nullptr) presence->giveBack();
  } catch (const DbError&) {
    // A server that is gone has given it back.
  }
}

std::unique_ptr<SetForOneself> takeForOneself(Database& set, AloneFor what, Prompt& prompt) {
  using namespace at_work_detail;
  const bool isInUse = dataModule().isAccountOpen() && &set == &accountDb();
  std::unique_ptr<Presence> other = isInUse ? nullptr : openPresence(set);
  Presence* const presence = isInUse ? own().get() : other.get();
  const bool isNamed = !other || other->enter({session().a_name, 0});  // operators have their numbers in their own set
  if (presence == nullptr || (isNamed && presence->takeAlone(static_cast<int>(what))))
    return std::unique_ptr<SetForOneself>(new SetForOneself(presence != nullptr, std::move(other)));
  QString words;
  if (const QStringList names = namesOf(set, *presence); !names.isEmpty())
    words = QStringLiteral("以下工作站正在使用帐套，请先让它们退出系统，再进行%1：\r\n\r\n%2")
                .arg(wordsOf(what), names.join(QStringLiteral("\r\n")));
  else
    words = whyNot(set, *presence).value_or(QStringLiteral("帐套正在使用，请稍候再试。"));
  prompt.refuse(Refusal(words));
  return nullptr;
}

std::unique_ptr<SetForOneself> takeForOneself(AloneFor what, Prompt& prompt) {
  return takeForOneself(accountDb(), what, prompt);
}

}  // namespace jxc
