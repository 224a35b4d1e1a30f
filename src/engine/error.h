// 数据库错误: what the database layer throws.
#pragma once

#include <QString>

#include <stdexcept>
#include <string>

namespace jxc {

/// Failure of a statement or of the database itself. `what()` and `message()` are meant for the operator; the
/// statement and the position are for whoever looks into it. A failure to open or read the account file carries the
/// name `jxc.mdb` in its message, which the application takes for fatal.
class DbError : public std::runtime_error {
 public:
  enum class Kind {
    Syntax,        // the text is no statement of the dialect
    UnknownName,   // a table or column that is not there
    Unsupported,   // cannot be said in the engine in use
    TypeMismatch,  // text where a number must stand, and the like
    TooWide,       // text wider than its column: names table and column
    Arithmetic,    // division by zero, overflow
    Constraint,    // duplicate key
    Busy,          // another station holds the file
    File,          // cannot be opened, read or written; no database
    Full,          // disk full
    Other
  };

  DbError(Kind kind, const QString& message, std::string statement = {}, int position = -1)
      : std::runtime_error(message.toStdString()),
        kind_(kind),
        message_(message),
        statement_(std::move(statement)),
        position_(position) {}

  Kind kind() const { return kind_; }
  const QString& message() const { return message_; }
  const std::string& statement() const { return statement_; }
  /// Byte offset into the statement, or -1.
  int position() const { return position_; }

 private:
  Kind kind_;
  QString message_;
  std::string statement_;
  int position_;
};

}  // namespace jxc
