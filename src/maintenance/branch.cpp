#include "maintenance/branch.h"

#include "core/backup.h"
#include "core/clock.h"
#include "core/file_names.h"
#include "core/log.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/sheet_export.h"
#include "engine/waiting.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace jxc {
namespace branch_detail {

constexpr std::int64_t mostRowsOfXls = 65535;

/// A sheet of the file: its name is its place. `share` of the whole bar is its part of the work.
struct Part {
  const char* columns;
  const char* rows;
  bool ofPeriod;
  int share;
};

constexpr int percentOfRows = 70;  // the file is put together in the rest

constexpr std::array parts{
    Part{.columns = "*", .rows = "jxc_goods", .ofPeriod = false, .share = 14},
    Part{.columns = "g_sn,kc_sl,kc_cbj", .rows = "jxc_kcsp", .ofPeriod = false, .share = 11},
    Part{.columns = "a.gl_djh,a.ls_dj,a.ls_sl,a.a_name,a.ls_zhje,b.ls_xsrq",
         .rows = "jxc_lsxssp a,jxc_lsxsd b where a.gl_djh=b.gl_djh and b.ls_xsrq>=? and b.ls_xsrq<=?",
         .ofPeriod = true,
         .share = 25},
    Part{.columns = "a.gl_djh,a.th_dj,a.th_sl,a.a_name,a.th_zhje,b.th_xsrq",
         .rows = "jxc_xsthsp a,jxc_xsthd b where a.gl_djh=b.gl_djh and b.th_xsrq>=? and b.th_xsrq<=?",
         .ofPeriod = true,
         .share = 17},
    Part{.columns = "fd_sn,fd_name", .rows = "jxc_fd", .ofPeriod = false, .share = 3},
};

/// What a station writes with the documents of one moment before it.
class Writing {
 public:
  Writing(Database& books, const Period& days) : books_(books) {
    // Documents carry the time behind their day: the last day counts to its end.
    period_ = {Value(days.from), Value(days.to + QStringLiteral(" 23:59:59"))};
    for (const Part& part : parts)
      counts_.push_back(books_.lookup(std::string("select count(*) from ") + part.rows, valuesOf(part)).integer());
  }

  std::int64_t mostRows() const { return *std::max_element(counts_.begin(), counts_.end()); }

  void write(const QString& file, const std::function<bool(int)>& progress) {
    std::size_t at = 0;
    std::int64_t before = 0;  // rows of the sheets that are written
    int done = 0;             // percent of them
    SheetsTogether sheets(file, [&](std::int64_t rows) {
      if (at == parts.size()) return !progress || progress(percentOfRows);
      const auto part = static_cast<int>(parts[at].share * (rows - before) / std::max<std::int64_t>(counts_[at], 1));
      return !progress || progress(std::min(done + part, percentOfRows - 1));
    });
    for (; at < parts.size(); ++at) {
      const Part& part = parts[at];
      std::vector<Value> values = valuesOf(part);
      values.insert(values.begin(), Value(file));
      books_.execute(std::string("select ") + part.columns + " into " + std::to_string(at + 1) +
                         " in ? 'EXCEL 8.0;' from " + part.rows,
                     values);
      before += counts_[at];
      done += part.share;
    }
    sheets.finish();
  }

 private:
  std::vector<Value> valuesOf(const Part& part) const {
    return part.ofPeriod ? std::vector<Value>(period_.begin(), period_.end()) : std::vector<Value>();
  }

  Database& books_;
  std::array<Value, 2> period_;
  std::vector<std::int64_t> counts_;
};

bool isDay(const QString& text) {
  return QDate::fromString(text, Qt::ISODate).isValid();
}

bool hasRefusedMark(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return QStringView(refusedInBranch).contains(c); });
}

}  // namespace branch_detail

std::optional<Branch> thisBranch() {
  const RowSet rows = openSelect("select fd_sn,fd_name,fd_dcrq from jxc_fd order by id");
  if (rows.isEmpty()) return {};
  const Row row = rows.front();
  return Branch{row.text("fd_sn"), row.text("fd_name"), row.text("fd_dcrq")};
}

bool saveBranch(const QString& sn, const QString& name, Prompt& prompt) {
  using namespace branch_detail;
  const QString code = sanitizeText(sn.trimmed()), words = sanitizeText(name.trimmed());
  if (refused(
          {{hasRefusedMark(sn), QStringLiteral("分店编号不能含有符号 ! \" % & ' , = ? @ [ \\ ] ^！"), Subject::Number},
           {hasRefusedMark(name), QStringLiteral("分店名称不能含有符号 ! \" % & ' , = ? @ [ \\ ] ^！"), Subject::Name},
           {code.isEmpty(), QStringLiteral("分店编号不能为空，请重新输入！"), Subject::Number},
           {words.isEmpty(), QStringLiteral("分店名称不能为空，请重新输入！"), Subject::Name}},
          prompt))
    return false;
  Transaction transaction(accountDb());
  const std::optional<Branch> before = thisBranch();
  // All rows: whatever stands in the table is the name of this one copy.
  if (before)
    execSql("update jxc_fd set fd_sn=?,fd_name=?", code, words);
  else
    insertRow("jxc_fd", {{"fd_sn", code}, {"fd_name", words}, {"fd_dcrq", ""}});
  writeLog(QStringLiteral("设置分店：") + code + u' ' + words);
  transaction.commit();
  prompt.notice(QStringLiteral("保存成功！"));
  return true;
}

std::optional<QString> exportBranch(const BranchExport& what, const std::function<bool(int)>& progress,
                                    Prompt& prompt) {
  using namespace branch_detail;
  const QString folder = what.folder.trimmed();
  const Period& days = what.days;
  if (refused({{!thisBranch(), QStringLiteral("分店信息不存在，不能导出！")},
               {folder.isEmpty(), QStringLiteral("导出路径不能为空，请重新输入！")},
               {!isDay(days.from) || !isDay(days.to), QStringLiteral("日期不正确，请重新输入！"), Subject::Date},
               {days.from > days.to, QStringLiteral("开始日期不能大于结束日期！"), Subject::Date},
               {!QFileInfo(folder).isDir(), QStringLiteral("导出失败，文件夹不存在！\r\n\r\n") + folder}},
              prompt))
    return {};

  QString file;
  bool stopped = false;
  try {
    const LongWork longWork;
    const std::unique_ptr<Database> reader = accountDb().openReader();
    Database& books = reader ? *reader : accountDb();
    Transaction moment(books);
    Writing writing(books, days);
    const bool isLong = writing.mostRows() > mostRowsOfXls;
    file = freeFileName(folder, QStringLiteral("系统数据库") + backupStamp(),
                        isLong ? QStringLiteral(".xlsx") : QStringLiteral(".xls"));
    writing.write(file, [&](int percent) {
      stopped = progress && !progress(percent);
      return !stopped;
    });
  } catch (const DbError& failure) {
    if (stopped) return {};
    if (failure.kind() != DbError::Kind::File) throw;
    prompt.notice(failure.message());
    return {};
  }
  QString done = QStringLiteral("备份完成！");
  try {
    execSql("update jxc_fd set fd_dcrq=?", clock::today());
  } catch (const DbError& failure) {
    done += QStringLiteral("\r\n\r\n但是没有记下导出时间：") + failure.message();
  }
  if (progress) progress(100);
  if (file.endsWith(QStringLiteral(".xlsx")))
    done += QStringLiteral("\r\n\r\n数据超过65535行，.xls文件放不下，已导出为.xlsx文件。");
  prompt.notice(done);
  prompt.say(QStringLiteral("已导出 ") + QDir::toNativeSeparators(file));
  return file;
}

}  // namespace jxc
