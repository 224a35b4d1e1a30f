// 计划: a statement translated for one engine: native texts, what to bind where, what comes back.
#pragma once

#include "jet/catalogue.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::jet {

/// A value that the engine itself gives: what date(), time() and now() of a statement say.
enum class Moment : unsigned char { None, Date, Time, Stamp };

/// Where the value of a native `?` comes from and how it is made fit on its way.
struct Parameter {
  int source = 0;                        // 0-based: the caller's value, or a column of the driving row
  bool fromDrivingRow = false;           // see Plan::Kind::JoinedUpdate
  ColumnType target = ColumnType::Text;  // type of the place it stands in
  bool typed = false;  // the place has a type: convert (numbers to six decimals, text to number …) when binding
  int width = 0;       // >0: refuse text of more characters, naming `label`
  std::string label;   // "jxc_goods.g_name"
  Moment moment = Moment::None;  // not the caller's: the clock's
};

struct Step {
  std::string sql;
  std::vector<Parameter> parameters;
};

struct ResultColumn {
  std::string name;
  ColumnType type = ColumnType::Text;
};

struct Plan {
  enum class Kind {
    Select,        // steps[0] returns rows
    Change,        // steps in order; the rows changed by the last one count
    JoinedUpdate,  // steps[0] returns driving rows; for each row in turn the other steps run, bound from it too
    Definition,    // create, alter, drop: steps in order, then the catalogue is read anew
    SheetExport    // steps[0] returns the rows that go to `sheet` of `file`
  };
  Kind kind = Kind::Select;
  std::vector<Step> steps;
  std::vector<ResultColumn> columns;
  int parameterCount = 0;  // `?` in the statement
  std::string sheet, file;
  int fileParameter = -1;  // SheetExport: the caller's value that names the file, instead of `file`
};

enum class Engine { Sqlite, Postgres };

/// What the translator throws. Position is a byte offset into the statement.
class TranslateError : public std::runtime_error {
 public:
  enum class Kind { Syntax, UnknownName, Unsupported, TypeMismatch };
  TranslateError(Kind kind, const std::string& message, int position)
      : std::runtime_error(message), kind(kind), position(position) {}
  Kind kind;
  int position;
};

/// Lexes, parses, binds against the catalogue and emits. Throws TranslateError; never passes an unknown construct on.
Plan translate(std::string_view statement, const Catalogue& catalogue, Engine engine);

}  // namespace jxc::jet
