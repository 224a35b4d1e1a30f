#include "engine/postgres/failure.h"

#include "engine/postgres/functions.h"

#include <string>

namespace jxc::postgres {
namespace failure_detail {

using Kind = DbError::Kind;

QString field(const PGresult* result, int code) {
  return QString::fromUtf8(PQresultErrorField(result, code));
}

/// "Key (g_sn)=(1001) already exists." in any language → "jxc_goods.g_sn"
QString duplicatePlace(const PGresult* result) {
  const QString detail = field(result, PG_DIAG_MESSAGE_DETAIL);
  const qsizetype open = detail.indexOf(u'('), close = detail.indexOf(u')');
  const QString table = field(result, PG_DIAG_TABLE_NAME);
  if (open < 0 || close < open) return table;
  return table + u'.' + detail.mid(open + 1, close - open - 1).remove(u'"');
}

struct Reason {
  std::string_view state;  // or its first two characters
  Kind kind;
  const char16_t* text;
};

constexpr Reason reasons[] = {
    {"22012", Kind::Arithmetic, u"除数不能为零。"},
    {"22003", Kind::Arithmetic, u"数值超出范围。"},
    {"2201E", Kind::Arithmetic, u"数值超出范围。"},
    {"2201F", Kind::Arithmetic, u"数值超出范围。"},
    {"22001", Kind::TooWide, u"内容太长，数据库不能保存。"},
    {"22P02", Kind::TypeMismatch, u"数据类型不符。"},
    {"55P03", Kind::Busy, u"数据库正被另一台工作站使用，请稍后再试。"},
    {"40P01", Kind::Busy, u"数据库正被另一台工作站使用，请稍后再试。"},
    {"40001", Kind::Busy, u"数据库正被另一台工作站使用，请稍后再试。"},
    {"53100", Kind::Full, u"服务器的磁盘空间已满，数据没有保存，请清理磁盘后再试。"},
    {"53200", Kind::Other, u"服务器内存不足。"},
    {"53", Kind::Busy, u"数据库服务器忙，请稍后再试。"},
    {"57014", Kind::Other, u"操作已取消。"},
    {"25006", Kind::File, u"数据库是只读的，数据没有保存。"},
    {"42501", Kind::File, u"没有访问数据库的权限，请检查服务器上的用户权限。"},
};

}  // namespace failure_detail

std::string_view stateOf(const PGresult* result) {
  const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
  return state ? state : "";
}

bool isStale(std::string_view state) {
  return state == "42P01" || state == "42703" || state == "0A000" || state == "26000" || state == "42883";
}

bool endsConnection(std::string_view state) {
  return state.starts_with("08") || state == "57P01" || state == "57P02" || state == "57P03" || state == "25P03" ||
         state == "57P05";
}

ConnectionLost cannotConnect(const char* nativeMessage) {
  return ConnectionLost(QStringLiteral("数据库服务器连接不上，请检查网络和服务器，稍后再试。\r\n\r\n") +
                            QString::fromUtf8(nativeMessage).trimmed(),
                        {});
}

ConnectionLost lostUnsaved(std::string_view statement) {
  return ConnectionLost(QStringLiteral("与数据库服务器的连接中断，本次操作没有保存，请重新操作。"),
                        std::string(statement));
}

ConnectionLost lostUnknown(std::string_view statement) {
  return ConnectionLost(QStringLiteral("与数据库服务器的连接在保存时中断，暂时不能确定本次操作是否已经保存。\r\n\r\n"
                                       "请在恢复连接后先查看，再决定是否重新操作。"),
                        std::string(statement), ConnectionLost::How::Unknown);
}

ConnectionLost lostSilent(std::string_view statement) {
  return ConnectionLost(QStringLiteral("数据库服务器一直没有应答，本次操作没有保存。\r\n\r\n"
                                       "请检查服务器是否还在工作，稍后再试。"),
                        std::string(statement), ConnectionLost::How::Silent);
}

DbError statementFailed(const PGresult* result, std::string_view statement, int (*widthOf)(void*, std::string_view),
                        void* context) {
  using namespace failure_detail;
  const std::string_view state = stateOf(result);
  const QString message = field(result, PG_DIAG_MESSAGE_PRIMARY);
  const auto failure = [&](Kind kind, const QString& text) { return DbError(kind, text, std::string(statement)); };
  if (state == function_failure::tooWide) {
    const int width = widthOf(context, message.toStdString());
    if (width > 0) return failure(Kind::TooWide, tooWide(message, width).message());
    return failure(Kind::TooWide, QStringLiteral("%1 的内容太长。").arg(message));
  }
  if (state == function_failure::noNumber)
    return failure(Kind::TypeMismatch, QStringLiteral("这里必须是数值，不能是“%1”。").arg(message));
  if (state == "23505")
    return failure(Kind::Constraint, QStringLiteral("数据重复：%1 已有相同的值。").arg(duplicatePlace(result)));
  if (state == "23502")
    return failure(Kind::Constraint,
                   QStringLiteral("%1 不能为空。")
                       .arg(field(result, PG_DIAG_TABLE_NAME) + u'.' + field(result, PG_DIAG_COLUMN_NAME)));
  if (state == "42P07" || state == "42710")
    return failure(Kind::Constraint, QStringLiteral("数据库对象已存在：%1").arg(message));
  if (state == "42P01" || state == "42703" || state == "42704")
    return failure(Kind::UnknownName, QStringLiteral("数据库中没有语句所用的表或字段：%1").arg(message));
  for (const Reason& reason : reasons) {
    if (state.starts_with(reason.state)) return failure(reason.kind, QString::fromUtf16(reason.text));
  }
  return failure(Kind::Other, QStringLiteral("数据库错误：%1").arg(message));
}

}  // namespace jxc::postgres
