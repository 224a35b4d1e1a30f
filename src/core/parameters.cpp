#include "core/parameters.h"

#include "core/backup.h"
#include "core/log.h"
#include "core/owner.h"
#include "core/refusal.h"
#include "core/roles.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace jxc {
namespace parameters_detail {

constexpr int kMostDigits = 6;
constexpr int kMostTillDigits = 3;
/// Kinds of sending: none, a mailbox of one's own, the common mailbox.
constexpr int kNoMail = 0, kOwnMailbox = 1;

/// Goods that were bought and wait for putaway, or were sold and wait for issue.
struct Waiting {
  const char* input;  // box that switches the function
  const char* find;
  const char* close;
  const char* closeHeads;  // what the lines now say
  const char16_t* function;
  const char16_t* undone;
  const char16_t* consequence;
};
constexpr Waiting kPutaway{
    "chkSprk",
    "select top 1 '单据号：'+j_sn+'，商品编号：'+g_sn from jxc_jhsp where jh_sl>jh_rksl+jh_qxsl order by id desc",
    "update jxc_jhsp set jh_rksl=jh_sl,jh_qxsl=0 where jh_sl>jh_rksl+jh_qxsl",
    "update jxc_jhd set j_crk=1 where j_crk=0",
    u"商品入库功能",
    u"入库",
    u"启用后，采购进货审核时不增加库存，由仓库另开商品入库单，审核后才增加库存。"};
constexpr Waiting kIssue{
    "chkSpck",
    "select top 1 '单据号：'+gl_djh+'，商品编号：'+g_sn from jxc_lsxssp where ls_sl>ls_cksl+ls_qxsl order by id desc",
    "update jxc_lsxssp set ls_cksl=ls_sl,ls_qxsl=0 where ls_sl>ls_cksl+ls_qxsl",
    "update jxc_lsxsd set ls_crk=1 where ls_crk=0",
    u"商品出库功能",
    u"出库",
    u"启用后，商品销售审核时不减少库存，由仓库另开商品出库单，审核后才减少库存。"};

QString text16(const char16_t* text) {
  return QString::fromUtf16(text);
}

bool wasOn(const Waiting& waiting) {
  return strIsTrue(waiting.input == kPutaway.input ? lookupValue("select cs_sprk from jxc_xtcs")
                                                   : lookupValue("select cs_spck from jxc_xtcs"));
}

/// A line that waits, in words; empty without one.
QString waitingLine(const Waiting& waiting) {
  return lookupValue(waiting.find);
}

void refuseSwitchingOff(const Waiting& waiting, const QString& line, Prompt& prompt) {
  prompt.notice(QStringLiteral("至少有一种商品没有完成%1，\r\n\r\n").arg(text16(waiting.undone)) + line +
                QStringLiteral("\r\n\r\n不能取消%1！").arg(text16(waiting.function)));
}

/// Few shops need it, and going back is hard: the operator shall know what he does.
void warnOfSwitchingOn(const Waiting& waiting, ParameterValues& values, Prompt& prompt) {
  if (wasOn(waiting) || !values.isOn(waiting.input)) return;
  const QString question =
      QStringLiteral("正常情况不需要【启用%1】，只有在仓库独立管理时才可以考虑启用本功能。\r\n\r\n")
          .arg(text16(waiting.function)) +
      text16(waiting.consequence) +
      QStringLiteral("\r\n\r\n还有商品没有完成%1时不能取消本功能，确认启用吗？").arg(text16(waiting.undone));
  if (!prompt.ask(question)) values.set(waiting.input, 0);
}

bool maySwitchOff(const Waiting& waiting, const ParameterValues& values, Prompt& prompt) {
  if (values.isOn(waiting.input) || !wasOn(waiting)) return true;
  const QString line = waitingLine(waiting);
  if (line.isEmpty()) return true;
  refuseSwitchingOff(waiting, line, prompt);
  return false;
}

bool refuse(Prompt& prompt, const QString& text, std::string_view input) {
  return !isRefused({text, Subject::Setting, QString::fromLatin1(input.data(), qsizetype(input.size()))}, prompt);
}

/// Decimals: one digit.
bool isDigits(const ParameterDefinition& p) {
  return p.kind == ParameterKind::Number && p.width == 1;
}

/// An input that was emptied does not say none: nobody wants whole yuan by a slip of the hand.
bool isWithin(const ParameterValues& values, std::string_view input, int most) {
  const Value& value = values.value(input);
  return !value.isNull() && value.integer() >= 0 && value.integer() <= most;
}

/// A setting counts as nothing while the box that goes with it is off.
bool isSwitchedOff(const ParameterDefinition& p, const ParameterValues& values) {
  return !p.switchedBy.empty() && !values.isOn(p.switchedBy);
}

/// The first number of decimals that is none; empty when all are fine.
std::string_view wrongDigits(const ParameterValues& values) {
  for (const ParameterDefinition& p : parameterTable())
    if (isDigits(p) && p.table == "jxc_xtcs" && !isSwitchedOff(p, values) && !isWithin(values, p.input, kMostDigits))
      return p.input;
  return {};
}

int columnWidth(std::string_view table, std::string_view column) {
  for (const auto& line : schema::columnsOf(*schema::findDefinition(table))) {
    if (line.name != column) continue;
    int width = 0;
    const auto open = line.type.find('(');
    std::from_chars(line.type.data() + open + 1, line.type.data() + line.type.size(), width);
    return width;
  }
  return 0;
}

Value storedValue(const ParameterDefinition& p, const ParameterValues& values) {
  switch (p.kind) {
    case ParameterKind::Choice:
      return std::max<std::int64_t>(0, values.integer(p.input));
    case ParameterKind::Flag:
      return values.isOn(p.input);
    case ParameterKind::Number:
      return isSwitchedOff(p, values) ? std::int64_t{0} : values.integer(p.input);
    case ParameterKind::Decimal:
      return isSwitchedOff(p, values) ? 0.0 : values.value(p.input).number();
    case ParameterKind::Text:
    case ParameterKind::Secret:
      // The company stands in printed texts and in statements of other programs; mail and gateway need their marks.
      if (p.table != "jxc_company") return values.text(p.input);
      return sanitizeKeyword(values.text(p.input)).left(columnWidth(p.table, p.field));
  }
  return {};
}

/// Writes the settings of one table into its row.
void saveRow(std::string_view table, std::int64_t id, const ParameterValues& values) {
  Sql sql(compose("update {} set ", {table}));
  for (const auto& p : parametersOf(table)) {
    if (p.input.empty()) continue;
    sql.add(sql.values().empty() ? "" : ",").add(compose("{}=?", {p.field}), storedValue(p, values));
  }
  execSql(sql.add(" where id=?", id));
}

std::int64_t rowOf(std::string_view table) {
  const RowSet rows = openSelect(compose("select id from {} order by id", {table}));
  if (!rows.isEmpty()) return rows.integer(0, 0);
  return insertRow(table, {{parametersOf(table).front().field, Value()}});
}

/// The row is built anew, so that nothing of a field without an input stays but the schema stamp: such a field is empty
/// from the first save on and reads as off, whatever a new account set has there.
void saveSystemParameters(const ParameterValues& values) {
  const QString stamp = lookupValue("select cs_employdate from jxc_xtcs");
  execSql("delete from jxc_xtcs");
  saveRow("jxc_xtcs", insertRow("jxc_xtcs", {{"cs_employdate", stamp}, {"cs_barcode", 0}}), values);
}

void saveMail(const ParameterValues& values) {
  const auto kind = values.integer("comLx");
  const bool hasReport =
      values.isOn("chkFj1") || values.isOn("chkFj2") || values.isOn("chkFj3") || values.isOn("chkFj4");
  const bool lacksServer = kind == kOwnMailbox && (values.text("tsmtp").isEmpty() || values.text("tsqpwd").isEmpty());
  const bool sends = kind != kNoMail && !values.text("temail").isEmpty() && !lacksServer && hasReport;
  const std::int64_t id = rowOf("jxc_email");
  saveRow("jxc_email", id, values);
  if (kind == kNoMail) updateRow("jxc_email", id, {{"e_fj1", 0}, {"e_fj2", 0}, {"e_fj3", 0}, {"e_fj4", 0}});
  updateRow("jxc_email", id, {{"e_fj9", 0}, {"e_date", QString()}, {"e_send", sends}});
}

/// A setting as the log tells it: of a list the chosen item, of a secret nothing.
QString inWords(const ParameterDefinition& p, const ParameterValues& values) {
  if (p.kind == ParameterKind::Flag) return values.isOn(p.input) ? QStringLiteral("是") : QStringLiteral("否");
  const auto choice = static_cast<std::size_t>(std::max<std::int64_t>(0, values.integer(p.input)));
  if (p.kind == ParameterKind::Choice && choice < p.choices.size()) return words(p.choices[choice]);
  return values.value(p.input).text();
}

void logChanges(const ParameterValues& before, const ParameterValues& now) {
  for (const ParameterDefinition& p : parameterTable()) {
    if (p.input.empty() || inWords(p, before) == inWords(p, now)) continue;
    QString name = words(p.label.empty() ? p.suffix : p.label);
    name.remove(u'：');
    writeLog(p.kind == ParameterKind::Secret
                 ? QStringLiteral("修改参数：%1").arg(name)
                 : QStringLiteral("修改参数：%1，%2 → %3").arg(name, inWords(p, before), inWords(p, now)));
  }
}

/// Lines that were never put away or issued because the function was off: they must not wait when it is switched on.
void closeStaleLines(const Waiting& waiting, const ParameterValues& values, bool wasSwitchedOn) {
  if (values.isOn(waiting.input) || wasSwitchedOn) return;
  execSql(waiting.close);
  execSql(waiting.closeHeads);
}

bool areFine(ParameterValues& values, Prompt& prompt) {
  for (const char* input : {"tname", "tjc"})
    if (values.text(input).isEmpty()) return refuse(prompt, QStringLiteral("公司信息必须填写！"), input);
  for (const char* input : {"tjews", "tdjws", "tzlws"})
    if (!isWithin(values, input, kMostTillDigits))
      return refuse(prompt, QStringLiteral("POS金额小数位数、POS单价小数位数、\r\n\r\nPOS重量小数位数，不能超过3位"),
                    input);
  if (values.text("tjzqz") == values.text("tjsqz"))
    return refuse(prompt, QStringLiteral("计重前缀和计数前缀不能相同！"), "tjsqz");
  warnOfSwitchingOn(kPutaway, values, prompt);
  warnOfSwitchingOn(kIssue, values, prompt);
  if (!maySwitchOff(kPutaway, values, prompt) || !maySwitchOff(kIssue, values, prompt)) return false;
  if (values.integer("comLx") != kNoMail && !checkMailSettings(values, prompt)) return false;
  if (const auto input = wrongDigits(values); !input.empty())
    return refuse(prompt, QStringLiteral("小数位数只能是0到6位！"), input);
  return true;
}

// ---- back to the standard ---------------------------------------------------------------------------------------

/// What a walk over all steps of the schema empties, where a shop has something there.
QStringList whatTheLadderEmpties() {
  struct Emptied {
    const char* count;
    const char16_t* words;
  };
  static constexpr Emptied emptied[] = {
      {"select count(*) from jxc_htgl", u"清除采购销售合同 %1 份"},
      {"select count(*) from jxc_ftpcs", u"清除合同附件的FTP设置 %1 项"},
      {"select count(*) from jxc_kdgs where kg_sn>'1023'", u"清除自己增加的快递公司 %1 家"},
      {"select count(*) from jxc_nj", u"清除数据结算结果 %1 行"},
      {"select count(*) from jxc_khjhsptmp", u"清除未保存的客户还货 %1 行"},
      {"select count(*) from jxc_goods where g_tssp<>0 or g_tsjf<>0", u"取消 %1 个商品的特殊积分"},
  };
  QStringList lines;
  for (const Emptied& each : emptied)
    if (const auto rows = static_cast<std::int64_t>(lookupNumber(each.count)); rows != 0)
      lines << QString::fromUtf16(each.words).arg(rows);
  return lines;
}

/// One of its steps appends a right to two groups of every role but the administrator's.
QStringList whatRolesGain() {
  QStringList lines;
  for (const RoleDraft& role : allRoles()) {
    QStringList gained;
    for (std::size_t i = 0; i < kRightsGroups; ++i) {
      const RightsGroup& group = rightsGroups()[i];
      const auto next = static_cast<std::size_t>(role.rights[i].size());
      if ((group.column == "cggl" || group.column == "xsgl") && next < group.rights.size())
        gained << words(group.rights[next]);
    }
    if (!gained.isEmpty())
      lines << QStringLiteral("给角色“%1”增加权限：%2").arg(role.name, gained.join(QStringLiteral("、")));
  }
  return lines;
}

}  // namespace parameters_detail

const Value& ParameterValues::value(std::string_view input) const {
  static const Value kNothing;
  const auto found = values_.find(input);
  return found == values_.end() ? kNothing : found->second;
}

ParameterValues readParameters() {
  ParameterValues values;
  std::string_view table;
  RowSet rows;
  for (const auto& p : parameterTable()) {
    if (p.table != table) {
      table = p.table;
      rows = openSelect(compose("select top 1 * from {} order by id", {table}));
    }
    if (p.input.empty() || rows.isEmpty()) continue;
    const Row row = rows.front();
    const bool isText = p.kind == ParameterKind::Text || p.kind == ParameterKind::Secret;
    if (isText) {
      values.set(p.input, row.text(p.field));
    } else if (p.kind == ParameterKind::Decimal) {
      values.set(p.input, row.number(p.field));
    } else if (parameters_detail::isDigits(p) && row.text(p.field).isEmpty()) {
      values.set(p.input, QByteArray(p.standard.data(), qsizetype(p.standard.size())).toInt());
    } else {
      values.set(p.input, row.integer(p.field));
    }
  }
  return values;
}

bool checkMailSettings(const ParameterValues& values, Prompt& prompt) {
  using parameters_detail::refuse;
  const QString address = values.text("temail");
  if (address.isEmpty()) return refuse(prompt, QStringLiteral("邮箱地址必须输入！"), "temail");
  if (!address.contains(u'@') || !address.contains(u'.')) {
    return refuse(prompt, QStringLiteral("邮箱地址不对，请重新输入！"), "temail");
  }
  if (values.integer("comLx") != parameters_detail::kOwnMailbox) return true;
  const QString server = values.text("tsmtp");
  if (server.isEmpty() || values.text("tsqpwd").isEmpty()) {
    return refuse(prompt, QStringLiteral("SMTP邮件服务器和邮箱授权密码必须输入！"),
                  server.isEmpty() ? "tsmtp" : "tsqpwd");
  }
  if (!server.contains(u'.')) return refuse(prompt, QStringLiteral("SMTP邮件服务器不正确，请重新输入！"), "tsmtp");
  return true;
}

bool saveParameters(ParameterValues& values, Prompt& prompt) {
  using namespace parameters_detail;
  if (!areFine(values, prompt)) return false;

  Transaction transaction(accountDb());
  const ParameterValues before = readParameters();
  closeStaleLines(kPutaway, values, wasOn(kPutaway));
  closeStaleLines(kIssue, values, wasOn(kIssue));
  saveRow("jxc_company", rowOf("jxc_company"), values);
  saveSystemParameters(values);
  saveRow("jxc_poscs", rowOf("jxc_poscs"), values);
  saveMail(values);
  logChanges(before, readParameters());
  transaction.commit();
  loadSession();
  return true;
}

bool restoreStandardParameters(Prompt& prompt) {
  using namespace parameters_detail;
  for (const Waiting* waiting : {&kPutaway, &kIssue}) {
    const QString line = waitingLine(*waiting);
    if (line.isEmpty()) continue;
    refuseSwitchingOff(*waiting, line, prompt);
    return false;
  }
  const QStringList losses = whatTheLadderEmpties() + whatRolesGain();
  QString question = QStringLiteral("系统参数、POS参数和邮件设置将恢复为默认值");
  if (!losses.isEmpty())
    question +=
        QStringLiteral("，下次登录时还会：\r\n\r\n") + losses.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n\r\n");
  else
    question += u'，';
  if (!prompt.ask(question + QStringLiteral("确认恢复默认系统设置吗？"))) return false;
  const Answer answer = prompt.askOrCancel(QStringLiteral("恢复默认系统设置之前，先备份帐套吗？"));
  if (answer == Answer::Cancel) return false;
  if (answer == Answer::Yes) prompt.notice(QStringLiteral("备份成功！备份文件保存在\r\n") + backupAccountSet());

  const bool done = asOwner(prompt, QStringLiteral("恢复默认系统设置"), [] {
    Transaction transaction(accountDb());
    createTable("jxc_xtcs");
    createTable("jxc_poscs");
    createTable("jxc_email");
    // The steps of the schema set some parameters to what they are today: the next login shall walk them all.
    execSql("update jxc_xtcs set cs_employdate='1900-01-01'");
    writeLog(QStringLiteral("恢复默认系统设置"));
    transaction.commit();
  });
  if (done) loadSession();
  return done;
}

}  // namespace jxc
