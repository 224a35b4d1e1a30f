#include "jet/binder.h"
#include "jet/emit_sqlite.h"
#include "jet/parser.h"
#include "jet/plan.h"

namespace jxc::jet {

Plan translate(std::string_view statement, const Catalogue& catalogue, Engine engine) {
  if (engine != Engine::Sqlite) {
    throw TranslateError(TranslateError::Kind::Unsupported, "this engine is not spoken yet", 0);
  }
  Tree tree;
  Parser(statement, tree).parse();
  Binder(tree, catalogue).bind();
  return SqliteEmitter(tree.statement).emit();
}

}  // namespace jxc::jet
